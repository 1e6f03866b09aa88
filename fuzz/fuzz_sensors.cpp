#include "probes/linux/ParseSensors.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

/// A value is what its digits say whatever stands around them, and a numbered name leads back to its number.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto value = probes::parseSensorValue(text)) {
        require(probes::parseSensorValue(" " + std::to_string(*value) + "\n") == value);
        require(text.find_first_of("0123456789") != text.npos);
    }
    if (const auto number = probes::numberBetween(text, "fan", "_input")) {
        require(probes::numberBetween("fan" + std::to_string(*number) + "_input", "fan", "_input") == number);
    }
    if (probes::parseTripKind(text) != probes::TripKind::other) require(!probes::coolsByThrottling(text));
    return 0;
}
