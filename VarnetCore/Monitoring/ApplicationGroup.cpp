#include "VarnetCore/Monitoring/ApplicationGroup.h"

#include "VarnetCore/Monitoring/SampleSums.h"

#include <algorithm>

namespace varnet {

std::string_view rawValue(GroupKind kind) noexcept {
    switch (kind) {
    case GroupKind::application:
        return "application";
    case GroupKind::project:
        return "project";
    case GroupKind::system:
        return "system";
    case GroupKind::unassigned:
        return "unassigned";
    }
    return {};
}

std::optional<double> ApplicationGroup::cpu() const noexcept {
    return SampleSums::sum(processes, &ProcessSample::averageCPU);
}

std::optional<double> ApplicationGroup::instantaneousCPU() const noexcept {
    return SampleSums::sum(processes, &ProcessSample::cpu);
}

std::optional<std::uint64_t> ApplicationGroup::memory() const noexcept {
    return SampleSums::memory(processes);
}

std::optional<double> ApplicationGroup::energyImpact() const noexcept {
    return SampleSums::sum(processes, &ProcessSample::energyImpact);
}

std::optional<double> ApplicationGroup::instantaneousEnergyImpact() const noexcept {
    return SampleSums::sum(processes, &ProcessSample::instantaneousEnergyImpact);
}

std::vector<int> ApplicationGroup::ports() const {
    return SampleSums::ports(processes);
}

std::vector<std::string> ApplicationGroup::agents() const {
    // Hundreds of processes are credited to a handful of agents: copy a name only when it is new.
    std::vector<std::string> names;
    for (const SampleRef& process : processes) {
        if (!process->attribution) continue;
        const std::string& agent = process->attribution->agent;
        const auto at = std::lower_bound(names.begin(), names.end(), agent);
        if (at == names.end() || *at != agent) names.insert(at, agent);
    }
    return names;
}

bool ApplicationGroup::incomplete() const noexcept {
    return std::any_of(processes.begin(), processes.end(),
                       [](const SampleRef& process) { return !process->cpu || !process->memory; });
}

bool ApplicationGroup::energyIncomplete() const noexcept {
    return std::any_of(processes.begin(), processes.end(),
                       [](const SampleRef& process) { return !process->energyImpact; });
}

} // namespace varnet
