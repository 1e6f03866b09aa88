#include "VarnetCore/Findings/BatchRequests.h"

#include "VarnetCore/Findings/GroupServices.h"
#include "VarnetCore/Findings/StopPlanner.h"

#include <algorithm>
#include <utility>

namespace varnet {
namespace {

using Requests = std::vector<BatchStopRequest>;

Requests requestsOfApplication(const ApplicationGroup& group, std::uint32_t uid, std::int32_t selfPID) {
    if (!group.application) return {};
    const auto main = std::ranges::find_if(
        group.processes, [&](const SampleRef& process) { return process->id.pid == group.application->pid; });
    if (main == group.processes.end()) return {};
    const ProcessSample& process = **main;
    if (process.uid != uid || process.isSystem || process.id.pid == selfPID) return {};
    return {{BatchStopRequest::Application{*group.application, process.id}}};
}

Requests requestsOfProject(const ApplicationGroup& group, std::span<const Service> services,
                           std::uint32_t uid, std::int32_t selfPID) {
    Requests requests;
    for (const Service& service : services) {
        if (worksIn(service, group) && StopPlanner::canStopProcess(*service.root, uid, selfPID)) {
            requests.push_back({BatchStopRequest::Process{service.root->id}});
        }
    }
    return requests;
}

} // namespace

std::vector<BatchStopRequest> batchRequests(const ApplicationGroup& group, std::span<const Service> services,
                                            std::uint32_t uid, std::int32_t selfPID) {
    switch (group.kind) {
    case GroupKind::system:
        return {};
    case GroupKind::application:
        return requestsOfApplication(group, uid, selfPID);
    case GroupKind::project:
        return requestsOfProject(group, services, uid, selfPID);
    case GroupKind::unassigned:
        break;
    }
    if (group.processes.size() != 1) return {};
    const ProcessSample& process = *group.processes.front();
    if (!StopPlanner::canStopProcess(process, uid, selfPID)) return {};
    return {{BatchStopRequest::Process{process.id}}};
}

std::vector<BatchStopRequest> batchRequests(const Service& service, std::uint32_t uid, std::int32_t selfPID) {
    if (!StopPlanner::canStopProcess(*service.root, uid, selfPID)) return {};
    return {{BatchStopRequest::Process{service.root->id}}};
}

std::map<std::string, std::vector<BatchStopRequest>> batchCandidates(std::span<const ApplicationGroup> groups,
                                                                     std::span<const Service> services,
                                                                     std::uint32_t uid,
                                                                     std::int32_t selfPID) {
    std::map<std::string, Requests> candidates;
    for (const ApplicationGroup& group : groups) {
        Requests requests = batchRequests(group, services, uid, selfPID);
        if (!requests.empty()) candidates.emplace(group.id, std::move(requests));
    }
    return candidates;
}

} // namespace varnet
