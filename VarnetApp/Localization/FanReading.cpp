#include "VarnetApp/Localization/FanReading.h"

#include <algorithm>

namespace varnet {

namespace {

QString detailOf(std::size_t fans) {
    if (fans == 0) return "No sensor reading";
    if (fans == 1) return "1 fan · measured speed";
    return QString("Fastest of %1 fans").arg(fans);
}

} // namespace

FanReading fanReading(const FanSnapshot& fans, const Figures& figures) {
    switch (fans.availability) {
    case FanAvailability::available: {
        FanReading reading{figures.speed(fans.fastest()), detailOf(fans.fans.size()), std::nullopt};
        const auto fastest = std::ranges::max_element(fans.fans, {}, &Fan::rpm);
        if (fastest != fans.fans.end()) reading.share = fastest->ratio();
        return reading;
    }
    case FanAvailability::fanless:
        return {"Fanless", "No fan in this Mac", std::nullopt};
    case FanAvailability::stale:
        return {Figures::unknown(), "Waiting for fresh readings", std::nullopt};
    case FanAvailability::unavailable:
        break;
    }
    return {Figures::unknown(), "Sensor unavailable", std::nullopt};
}

} // namespace varnet
