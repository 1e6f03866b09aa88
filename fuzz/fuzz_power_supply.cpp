#include "VarnetApp/Platform/linux/PowerSupply.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"

using namespace varnet;

/// Whatever drivers publish ("file=text" lines, an empty line between two supplies), the reading stays within
/// its ranges.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text(reinterpret_cast<const char*>(data), size);
    std::vector<PowerSupply> supplies(1);
    while (!text.empty() && supplies.size() < 9) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        const std::size_t equals = line.find('=');
        if (line.empty()) {
            supplies.emplace_back();
        } else if (equals != line.npos) {
            supplies.back().take(line.substr(0, equals), line.substr(equals + 1));
        }
    }
    const PowerSupplies all = PowerSupplies::combine(supplies, supplies);
    const auto reading =
        BatteryReading::parse(all.power, all.registry, all.adapterWatts, false, Date{800'000'000});
    require(std::isfinite(reading.charge.value_or(0)));
    require(reading.charge.value_or(0) >= 0 && reading.charge.value_or(0) <= 100);
    require(reading.health.value_or(0) >= 0 && reading.health.value_or(0) <= 100);
    require(std::abs(reading.watts.value_or(0)) <= 500);
    require(reading.minutesRemaining.value_or(1) >= 1 && reading.minutesToFull.value_or(1) >= 1);
    return 0;
}
