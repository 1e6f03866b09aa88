#include "VarnetCore/Battery/BatteryArchive.h"

namespace varnet {

namespace {

bool isWithin(double age, double longest) noexcept {
    return age >= 0 && age <= longest;
}

template <typename Entry>
void keepNewest(std::vector<Entry>& entries, std::size_t most) {
    if (entries.size() > most)
        entries.erase(entries.begin(), entries.end() - static_cast<std::ptrdiff_t>(most));
}

} // namespace

void BatteryArchive::prune(Date at) {
    std::erase_if(points, [at](const BatteryPoint& point) { return !isWithin(at - point.date, pointAge); });
    std::erase_if(health,
                  [at](const BatteryHealthPoint& point) { return !isWithin(at - point.date, healthAge); });
    std::erase_if(sessions,
                  [at](const BatterySession& session) { return !isWithin(at - session.end, sessionAge); });
    keepNewest(points, mostPoints);
    keepNewest(health, mostHealth);
    keepNewest(sessions, mostSessions);
}

} // namespace varnet
