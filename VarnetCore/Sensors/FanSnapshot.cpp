#include "VarnetCore/Sensors/FanSnapshot.h"

namespace varnet {

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
