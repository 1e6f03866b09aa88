#include "VarnetCore/Hall/FlameArchive.h"

namespace varnet {

FlameArchive FlameArchive::beginning(Date now) {
    FlameArchive archive;
    archive.started = now;
    archive.timezone = FlameCalendar::currentZone();
    return archive;
}

double FlameArchive::metric(std::string_view key) const {
    const auto found = metrics.find(std::string(key));
    return found == metrics.end() ? 0 : found->second;
}

} // namespace varnet
