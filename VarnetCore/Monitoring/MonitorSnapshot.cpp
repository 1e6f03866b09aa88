#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include "VarnetCore/Monitoring/SampleSums.h"

#include <algorithm>
#include <unordered_set>

namespace varnet {

std::string_view rawValue(Thermal thermal) noexcept {
    switch (thermal) {
    case Thermal::nominal:
        return "nominal";
    case Thermal::fair:
        return "fair";
    case Thermal::serious:
        return "serious";
    case Thermal::critical:
        return "critical";
    }
    return {};
}

std::optional<double> MonitorSnapshot::normalized(std::optional<double> value) const noexcept {
    if (!value) return std::nullopt;
    return std::clamp(*value / std::max(1, logicalCores), 0.0, 100.0);
}

std::optional<std::uint64_t> MonitorSnapshot::processMemory() const noexcept {
    return SampleSums::memory(processes);
}

std::size_t MonitorSnapshot::developmentCount() const {
    return static_cast<std::size_t>(
        std::count_if(processes.begin(), processes.end(),
                      [](const SampleRef& process) { return process->isDevelopment(); }));
}

std::size_t MonitorSnapshot::agentCount() const {
    // Agents are few and processes many: collect the origins, then look which of them still run.
    std::unordered_set<ProcessIdentity> origins;
    for (const SampleRef& process : processes) {
        if (process->attribution) origins.insert(process->attribution->origin);
    }
    std::size_t living = 0;
    for (const SampleRef& process : processes) {
        if (origins.empty()) break;
        living += origins.erase(process->id);
    }
    return living;
}

} // namespace varnet
