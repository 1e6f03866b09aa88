#include "VarnetCore/Findings/StopPlanner.h"

#include "VarnetCore/Findings/PlanningTable.h"
#include "VarnetCore/Monitoring/Detector.h"
#include "VarnetCore/Monitoring/SampleSums.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace varnet::StopPlanner {
namespace {

/// A pid may have been reused: a child is never older than its parent.
bool isChild(const ProcessSample& process, const ProcessSample& parent) noexcept {
    return process.id.boot == parent.id.boot && process.id.start >= parent.id.start;
}

/// The root and what it has started, level by level.
std::vector<SampleRef> collect(const SampleRef& root, const PlanningTable& table, std::uint32_t uid,
                               std::int32_t selfPID) {
    std::vector<SampleRef> collected{root};
    // Levels never fall along the list, so the first place that a process gets is its final one.
    std::unordered_set<ProcessIdentity> seen{root->id};
    std::size_t levelEnd = 1;
    int level = 0;
    for (std::size_t at = 0; at < collected.size() && level < deepestLevel; ++at) {
        const SampleRef parent = collected[at];
        for (const SampleRef* child : table.children(parent->id.pid)) {
            const ProcessSample& process = **child;
            if (isChild(process, *parent) && inSameProject(process, *root) &&
                !isProtected(process, uid, selfPID) && seen.insert(process.id).second) {
                collected.push_back(*child);
            }
        }
        if (at + 1 == levelEnd) {
            levelEnd = collected.size();
            ++level;
        }
    }
    return collected;
}

StopPlan planFor(const SampleRef& root, std::span<const SampleRef> collected) {
    StopPlan plan;
    plan.id = Uuid::random();
    plan.name = root->serviceName();
    if (root->project) plan.project = root->project->name;
    plan.ports = SampleSums::ports(collected);
    for (const SampleRef& process : collected)
        plan.targets.push_back({process->id, process->uid, process->name.str()});
    plan.serviceID = root->id.id();
    plan.root = root->id;
    if (root->attribution) plan.origin = *root->attribution;
    return plan;
}

} // namespace

bool isProtected(const ProcessSample& process, std::uint32_t uid, std::int32_t selfPID) {
    if (process.uid != uid || process.isSystem) return true;
    if (process.id.pid < 2 || process.id.pid == selfPID) return true;
    // A helper that merely belongs to an application is not caught here, only its main process.
    if (process.application && process.application->pid == process.id.pid) return true;
    const std::string_view executable = process.executable;
    // Python's framework runs ordinary scripts from inside a bundle of its own.
    if (executable.find(".app/") != std::string_view::npos &&
        executable.find("/Python.app/Contents/") == std::string_view::npos) {
        return true;
    }
    return !Detector::agentName(process.name, executable, process.arguments, {}).empty();
}

bool canStopProcess(const ProcessSample& process, std::uint32_t uid, std::int32_t selfPID) {
    if (isProtected(process, uid, selfPID)) return false;
    return process.isDevelopment() || process.project ||
           (process.attribution && process.attribution->confidence == Confidence::observed);
}

std::expected<StopPlan, StopPlanningError> make(const ProcessSample& process, const MonitorSnapshot& snapshot,
                                                std::uint32_t uid, std::int32_t selfPID) {
    return make(process.id, PlanningTable(snapshot), uid, selfPID);
}

std::expected<StopPlan, StopPlanningError> make(const Service& service, const MonitorSnapshot& snapshot,
                                                std::uint32_t uid, std::int32_t selfPID) {
    return make(service, PlanningTable(snapshot), uid, selfPID);
}

std::expected<StopPlan, StopPlanningError> make(const ProcessIdentity& process, const PlanningTable& table,
                                                std::uint32_t uid, std::int32_t selfPID) {
    const SampleRef* root = table.failed() ? nullptr : table.find(process);
    if (!root) return std::unexpected(StopPlanningError::unavailable);
    if (isProtected(**root, uid, selfPID)) return std::unexpected(StopPlanningError::protectedProcess);
    if (!canStopProcess(**root, uid, selfPID)) return std::unexpected(StopPlanningError::unavailable);
    return planFor(*root, collect(*root, table, uid, selfPID));
}

std::expected<StopPlan, StopPlanningError> make(const Service& service, const PlanningTable& table,
                                                std::uint32_t uid, std::int32_t selfPID) {
    if (service.ports().empty()) return std::unexpected(StopPlanningError::unavailable);
    return make(service.root->id, table, uid, selfPID);
}

} // namespace varnet::StopPlanner
