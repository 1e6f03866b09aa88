#include "VarnetCore/Findings/PlanningTable.h"

#include <algorithm>

namespace varnet {
namespace {

std::int32_t parentOf(const SampleRef* process) noexcept {
    return (*process)->parentPID;
}

} // namespace

PlanningTable::PlanningTable(const MonitorSnapshot& snapshot) : failed_(snapshot.error.has_value()) {
    byIdentity_.reserve(snapshot.processes.size());
    byParent_.reserve(snapshot.processes.size());
    for (const SampleRef& process : snapshot.processes) {
        byIdentity_.emplace(process->id, &process);
        byParent_.push_back(&process);
    }
    std::ranges::stable_sort(byParent_, {}, parentOf);
}

const SampleRef* PlanningTable::find(const ProcessIdentity& identity) const {
    const auto found = byIdentity_.find(identity);
    return found == byIdentity_.end() ? nullptr : found->second;
}

std::span<const SampleRef* const> PlanningTable::children(std::int32_t pid) const {
    const auto range = std::ranges::equal_range(byParent_, pid, {}, parentOf);
    return {range.begin(), range.end()};
}

} // namespace varnet
