#include "VarnetCore/Sensors/FanSnapshot.h"

#include <algorithm>
#include <cmath>

namespace varnet {

std::optional<double> Fan::ratio() const noexcept {
    if (!maximum || !std::isfinite(*maximum) || *maximum <= 0 || *maximum > fastest) return std::nullopt;
    if (!std::isfinite(rpm) || rpm < 0 || rpm > *maximum) return std::nullopt;
    return rpm / *maximum;
}

std::optional<double> FanSnapshot::fastest() const noexcept {
    if (availability != FanAvailability::available || fans.empty()) return std::nullopt;
    return std::ranges::max_element(fans, {}, &Fan::rpm)->rpm;
}

std::string_view rawValue(FanAvailability availability) noexcept {
    switch (availability) {
    case FanAvailability::available:
        return "available";
    case FanAvailability::fanless:
        return "fanless";
    case FanAvailability::unavailable:
        return "unavailable";
    case FanAvailability::stale:
        return "stale";
    }
    return {};
}

} // namespace varnet
