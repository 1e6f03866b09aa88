#include "VarnetApp/ShareCards/ShareCardSnapshot.h"

#include "VarnetApp/Localization/FanReading.h"
#include "VarnetCore/Flame/RoastText.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

namespace varnet {

namespace {

std::vector<std::string> namesOfProjects(const MonitorSnapshot& snapshot) {
    std::set<std::string> names;
    for (const ApplicationGroup& group : snapshot.groups)
        if (group.project) names.insert(group.project->name);
    return {names.begin(), names.end()};
}

/// What is shown never exceeds a signed number of 64 bits.
std::optional<std::uint64_t> capped(std::optional<std::uint64_t> bytes) {
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return bytes ? std::optional(std::min(*bytes, most)) : std::nullopt;
}

} // namespace

ShareCardSnapshot::ShareCardSnapshot(const MonitorSnapshot& snapshot, Roast line, ProjectNames names,
                                     const Figures& figures)
    : date(snapshot.date), roast(std::move(line)),
      cpu(QString::fromStdString(RoastText::share(snapshot.systemCPU))),
      memory(figures.memory(capped(snapshot.processMemory()))), serverCount(snapshot.services.size()),
      toolCount(snapshot.agentCount()) {
    FanReading reading = fanReading(snapshot.fans, figures);
    fans = std::move(reading.figure);
    fanDetail = std::move(reading.detail);
    if (names == ProjectNames::included) projectNames = namesOfProjects(snapshot);
}

} // namespace varnet
