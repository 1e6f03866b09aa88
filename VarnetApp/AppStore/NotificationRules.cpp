#include "VarnetApp/AppStore/NotificationRules.h"

namespace varnet {

namespace {

std::vector<Notice> candidates(const MonitorSnapshot& snapshot) {
    std::vector<Notice> notices;
    for (const Finding& finding : snapshot.findings)
        if (finding.kind == FindingKind::highCPU)
            notices.push_back({finding.id, finding.title, finding.explanation});
    if (snapshot.thermal == Thermal::serious || snapshot.thermal == Thermal::critical) {
        notices.push_back(
            {"thermal", "Your Mac could use a breather",
             "macOS reports " + std::string(rawValue(snapshot.thermal)) + " thermal pressure."});
    }
    if (snapshot.fans.availability == FanAvailability::available &&
        snapshot.fans.level == FanLevel::takeoff) {
        notices.push_back(
            {"fans", "Cabin crew, prepare for localhost.", "Open Varnet to see current activity."});
    }
    return notices;
}

} // namespace

std::vector<Notice> NotificationRules::due(const MonitorSnapshot& snapshot, Date now,
                                           NotificationDates& dates) {
    if (snapshot.error || snapshot.processes.empty() || now - snapshot.date >= staleSample) return {};
    std::vector<Notice> told;
    for (Notice& notice : candidates(snapshot)) {
        const auto last = dates.find(notice.key);
        if (now - (last == dates.end() ? Date::distantPast() : last->second) <= quietTime) continue;
        std::erase_if(dates, [now](const auto& entry) { return now - entry.second >= quietTime; });
        dates[notice.key] = now;
        told.push_back(std::move(notice));
    }
    return told;
}

} // namespace varnet
