#include "VarnetCore/Flame/RoastSubject.h"

#include "VarnetCore/Flame/DockFlameState.h"

#include <algorithm>

namespace varnet {

namespace {

bool isUnknown(const MonitorSnapshot& snapshot) {
    const auto hasCPU = [](const SampleRef& process) { return process->cpu.has_value(); };
    return snapshot.error || snapshot.processes.empty() ||
           (!snapshot.systemCPU && std::ranges::none_of(snapshot.processes, hasCPU));
}

/// Empty when the fans give nothing to talk about.
std::optional<std::string> fanTopic(const MonitorSnapshot& snapshot) {
    if (!fansCount(snapshot)) return std::nullopt;
    if (snapshot.fans.level == FanLevel::takeoff) return "takeoff";
    if (snapshot.fans.level == FanLevel::vacuum) return "vacuum";
    return std::nullopt;
}

/// A finding of the kind: the one under discussion, else the first by id.
const Finding* findingOf(FindingKind kind, const MonitorSnapshot& snapshot,
                         const std::optional<RoastContext>& presented) {
    const Finding* first = nullptr;
    for (const Finding& finding : snapshot.findings) {
        if (finding.kind != kind) continue;
        if (presented && presented->findingID == finding.id) return &finding;
        if (!first || finding.id < first->id) first = &finding;
    }
    return first;
}

const ApplicationGroup* heldGroup(const MonitorSnapshot& snapshot,
                                  const std::optional<RoastContext>& presented) {
    if (!presented || !presented->groupID) return nullptr;
    const auto found = std::ranges::find(snapshot.groups, *presented->groupID, &ApplicationGroup::id);
    return found == snapshot.groups.end() ? nullptr : &*found;
}

/// The busiest group, unless the one under discussion is nearly as busy. Null without groups.
const ApplicationGroup* consideredGroup(const MonitorSnapshot& snapshot, const ApplicationGroup* held) {
    if (snapshot.groups.empty()) return nullptr;
    const ApplicationGroup* const top = &snapshot.groups.front();
    const std::optional<double> heldCPU = held ? held->cpu() : std::nullopt;
    if (!heldCPU || *heldCPU < RoastSubject::groupStays) return top;
    const std::optional<double> topCPU = top->cpu();
    if (!topCPU || *topCPU >= std::max(*heldCPU * 1.2, *heldCPU + 8)) return top;
    return held;
}

std::string topicOf(const ApplicationGroup& group) {
    switch (group.kind) {
    case GroupKind::project:
        return "development";
    case GroupKind::application:
        return group.name == "Figma" ? "figma" : "app";
    case GroupKind::system:
    case GroupKind::unassigned:
        break;
    }
    return "system";
}

} // namespace

RoastContext RoastSubject::choose(const MonitorSnapshot& snapshot,
                                  const std::optional<RoastContext>& presented) {
    const auto about = [](std::string topic) { return RoastContext{std::move(topic), {}, {}}; };
    if (isUnknown(snapshot)) return about("unknown");
    if (snapshot.thermal == Thermal::serious || snapshot.thermal == Thermal::critical)
        return about("thermal");
    if (auto topic = fanTopic(snapshot)) return about(std::move(*topic));
    if (snapshot.thermal == Thermal::fair) return about("warm");
    for (const auto& [kind, topic] :
         {std::pair(FindingKind::forgotten, "forgotten"), std::pair(FindingKind::duplicate, "duplicate")})
        if (const Finding* const finding = findingOf(kind, snapshot, presented))
            return {topic, std::nullopt, finding->id};
    const ApplicationGroup* const held = heldGroup(snapshot, presented);
    if (const ApplicationGroup* const group = consideredGroup(snapshot, held)) {
        const bool stays = presented && presented->groupID == group->id;
        if (group->cpu().value_or(0) >= (stays ? groupStays : groupEnters))
            return {topicOf(*group), group->id, std::nullopt};
    }
    const bool busy = presented && presented->topic == "workload";
    if (snapshot.systemCPU.value_or(0) >= (busy ? workloadStays : workloadEnters)) return about("workload");
    return about(snapshot.fans.availability == FanAvailability::fanless ? "fanless" : "quiet");
}

} // namespace varnet
