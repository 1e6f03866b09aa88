#include "VarnetCore/Monitoring/ServiceBuilder.h"

#include "VarnetCore/Findings/StopPlanner.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace varnet {
namespace {

using Position = std::int32_t;

constexpr std::size_t index(Position at) noexcept {
    return static_cast<std::size_t>(at);
}

/// Positions of the processes that could stand for a server, in list order.
std::vector<Position> findCandidates(std::span<const SampleRef> processes,
                                     const std::vector<bool>& development, std::uint32_t currentUID) {
    std::vector<Position> candidates;
    for (std::size_t at = 0; at < processes.size(); ++at) {
        const ProcessSample& process = *processes[at];
        if (process.ports.empty() || !(development[at] || process.project)) continue;
        // This program is not left out here: it is shown as what it is, and refused when it is to be stopped.
        if (StopPlanner::canStopProcess(process, currentUID, -1)) {
            candidates.push_back(static_cast<Position>(at));
        }
    }
    return candidates;
}

/// Those candidates that have no other of the same project above them.
std::vector<Position> findRoots(std::span<const SampleRef> processes, const ProcessChains& chains,
                                const std::vector<Position>& candidates) {
    std::vector<bool> isCandidate(processes.size());
    for (const Position at : candidates)
        isCandidate[index(at)] = true;
    std::vector<Position> roots;
    for (const Position at : candidates) {
        bool below = false;
        chains.visitAncestors(at, [&](Position ancestor) {
            below = isCandidate[index(ancestor)] &&
                    inSameProject(*processes[index(ancestor)], *processes[index(at)]);
            return below;
        });
        if (!below) roots.push_back(at);
    }
    return roots;
}

/// One walk upwards for every process, however many services there are.
void fillMembers(std::vector<Service>& services, const std::vector<Position>& roots,
                 std::span<const SampleRef> processes, const ProcessChains& chains) {
    constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::vector<std::size_t> serviceOf(processes.size(), none);
    for (std::size_t at = 0; at < roots.size(); ++at)
        serviceOf[index(roots[at])] = at;

    for (std::size_t at = 0; at < processes.size(); ++at) {
        const SampleRef& process = processes[at];
        if (serviceOf[at] != none) services[serviceOf[at]].members.push_back(process);
        if (process->isSystem) continue;
        chains.visitAncestors(static_cast<Position>(at), [&](Position ancestor) {
            const std::size_t found = serviceOf[index(ancestor)];
            if (found == none) return false;
            Service& service = services[found];
            // A loop of parents leads by the same root more than once.
            const bool joined = !service.members.empty() && service.members.back() == process;
            if (!joined && service.root->uid == process->uid && inSameProject(*service.root, *process)) {
                service.members.push_back(process);
            }
            return false;
        });
    }
}

} // namespace

std::vector<Service> makeServices(std::span<const SampleRef> processes, const ProcessChains& chains,
                                  const std::vector<bool>& development, std::uint32_t currentUID) {
    const std::vector<Position> roots =
        findRoots(processes, chains, findCandidates(processes, development, currentUID));
    if (roots.empty()) return {};
    std::vector<Service> services;
    services.reserve(roots.size());
    for (const Position root : roots)
        services.push_back({processes[index(root)], {}});
    fillMembers(services, roots, processes, chains);

    std::vector<std::pair<std::string, std::size_t>> byId;
    byId.reserve(services.size());
    for (std::size_t at = 0; at < services.size(); ++at)
        byId.emplace_back(services[at].id(), at);
    std::sort(byId.begin(), byId.end());
    std::vector<Service> ordered;
    ordered.reserve(services.size());
    for (const auto& [id, at] : byId)
        ordered.push_back(std::move(services[at]));
    return ordered;
}

} // namespace varnet
