#include "VarnetCore/Battery/BatteryHistory.h"

namespace varnet {

BatteryArchive BatteryHistory::archive() const {
    BatteryArchive copy;
    copy.points = *points;
    copy.health = *health;
    copy.sessions.reserve(sessions.size());
    for (const auto& session : sessions)
        copy.sessions.push_back(*session);
    return copy;
}

} // namespace varnet
