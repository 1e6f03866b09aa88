#include "probes/linux/ParseSystem.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

/// Lines of single processors in front and counters behind change nothing, and no answer comes without a line
/// of its name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto ticks = probes::parseCPUTicks(text);
    const auto boot = probes::parseBootTime(text);
    require(!ticks || text.find("cpu") != text.npos);
    require(!boot || text.find("btime") != text.npos);
    const std::string more = "cpu0 9 9 9 9\n" + std::string(text) + "\nctxt 9\n";
    const auto again = probes::parseCPUTicks(more);
    require(ticks.has_value() == again.has_value());
    if (ticks) {
        require(ticks->user == again->user && ticks->system == again->system);
        require(ticks->idle == again->idle && ticks->nice == again->nice);
    }
    require(boot == probes::parseBootTime(more));
    return 0;
}
