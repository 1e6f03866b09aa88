#include "VarnetCore/Findings/FindingEngine.h"

#include "VarnetCore/Base/Display.h"

#include <algorithm>
#include <optional>
#include <set>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace varnet {
namespace {

/// One process that could not be measured disqualifies its group: its minute starts over.
bool isAtWork(const ApplicationGroup& group) noexcept {
    double total = 0;
    for (const SampleRef& process : group.processes) {
        if (!process->cpu || !process->memory) return false;
        total += *process->cpu;
    }
    return total >= FindingEngine::highCPULine;
}

std::uint64_t oldestStart(const ApplicationGroup& group) noexcept {
    const auto start = [](const SampleRef& process) { return process->id.start; };
    const auto oldest = std::ranges::min_element(group.processes, {}, start);
    return oldest == group.processes.end() ? 0 : start(*oldest);
}

std::string instanceKey(std::string_view groupID, std::uint64_t start) {
    return std::string(groupID) + ':' + std::to_string(start);
}

void appendTargets(std::span<const SampleRef> processes, std::vector<ProcessIdentity>& targets) {
    for (const SampleRef& process : processes)
        targets.push_back(process->id);
}

/// The projects in which a living agent has some process at work. Only built once a server gets that far.
class AgentsAtWork {
public:
    explicit AgentsAtWork(std::span<const SampleRef> processes) : processes_(processes) {}

    bool anyIn(const Project& project) {
        if (!roots_) build();
        return roots_->contains(project.root);
    }

private:
    void build() {
        std::unordered_set<ProcessIdentity> live;
        live.reserve(processes_.size());
        for (const SampleRef& process : processes_)
            live.insert(process->id);
        roots_.emplace();
        for (const SampleRef& process : processes_) {
            if (process->project && process->attribution && live.contains(process->attribution->origin)) {
                roots_->insert(process->project->root);
            }
        }
    }

    std::span<const SampleRef> processes_;
    std::optional<std::unordered_set<std::string_view>> roots_;
};

/// When the agent that started a service exited, if the service looks left behind by it.
std::optional<Date> leftBehindSince(const Service& service, Date now) noexcept {
    const ProcessSample& root = *service.root;
    if (!root.project || !root.attribution) return std::nullopt;
    const Attribution& attribution = *root.attribution;
    if (attribution.confidence != Confidence::observed || !attribution.exitedAt) return std::nullopt;
    const bool longAgo = now - *attribution.exitedAt >= FindingEngine::agentGone &&
                         now - root.id.startedAt() >= FindingEngine::serverAge;
    return longAgo ? attribution.exitedAt : std::nullopt;
}

void findForgotten(std::span<const Service> services, std::span<const SampleRef> processes, Date now,
                   std::vector<Finding>& findings) {
    AgentsAtWork agents(processes);
    for (const Service& service : services) {
        const std::optional<Date> exitedAt = leftBehindSince(service, now);
        if (!exitedAt || agents.anyIn(*service.project())) continue;
        Finding finding{"forgotten:" + service.id(),
                        FindingKind::forgotten,
                        service.name() + " may be forgotten",
                        service.root->attribution->agent + " exited " + Display::duration(*exitedAt, now) +
                            " ago. The server is still running; it may still be in use.",
                        "project:" + service.project()->root,
                        {},
                        *exitedAt};
        appendTargets(service.members, finding.targets);
        findings.push_back(std::move(finding));
    }
}

/// What servers have to share to look alike. Empty for a server of which too little is known.
std::string likeness(const Service& service) {
    const ProcessSample& root = *service.root;
    if (!root.project || !root.cwd || !root.portsAvailable || root.arguments.empty()) return {};
    return root.project->root + '|' + root.cwd->str() + '|' + service.name() + '|' +
           FindingEngine::normalizedCommand(root.arguments);
}

/// Servers that share even their only port cannot be told apart and are not reported.
bool onSeveralPorts(std::span<const Service* const> services) {
    std::set<int> ports;
    for (const Service* service : services) {
        for (const SampleRef& member : service->members)
            ports.insert(member->ports.begin(), member->ports.end());
    }
    return ports.size() > 1;
}

Finding similarServers(std::span<const Service* const> services, Date now) {
    std::vector<std::string> ids;
    std::vector<ProcessIdentity> targets;
    for (const Service* service : services) {
        ids.push_back(service->id());
        appendTargets(service->members, targets);
    }
    std::ranges::sort(ids);
    std::string id = "duplicate:";
    for (const std::string& one : ids)
        id.append(&one == &ids.front() ? "" : ";").append(one);
    return {std::move(id),
            FindingKind::duplicate,
            std::to_string(services.size()) + " similar servers",
            "Same worktree, directory and command; different ports. Check whether both instances are "
            "intentional.",
            "project:" + services.front()->project()->root,
            std::move(targets),
            now};
}

void findSimilar(std::span<const Service> services, Date now, std::vector<Finding>& findings) {
    std::map<std::string, std::vector<const Service*>> alike;
    for (const Service& service : services) {
        std::string key = likeness(service);
        if (!key.empty()) alike[std::move(key)].push_back(&service);
    }
    for (const auto& [key, set] : alike) {
        if (set.size() > 1 && onSeveralPorts(set)) findings.push_back(similarServers(set, now));
    }
}

/// Most pressing first; not the order in which the kinds are declared.
int rank(FindingKind kind) noexcept {
    switch (kind) {
    case FindingKind::highCPU:
        return 0;
    case FindingKind::restarted:
        return 1;
    case FindingKind::duplicate:
        return 2;
    case FindingKind::forgotten:
        return 3;
    }
    return 4;
}

} // namespace

std::vector<Finding> FindingEngine::evaluate(std::span<const ApplicationGroup> groups,
                                             std::span<const Service> services,
                                             std::span<const SampleRef> processes, Date now) {
    std::vector<Finding> findings;
    findHighCPU(groups, now, findings);
    findForgotten(services, processes, now, findings);
    findSimilar(services, now, findings);
    std::ranges::stable_sort(findings, [](const Finding& a, const Finding& b) {
        return std::forward_as_tuple(rank(a.kind), a.id) < std::forward_as_tuple(rank(b.kind), b.id);
    });
    return findings;
}

void FindingEngine::findHighCPU(std::span<const ApplicationGroup> groups, Date now,
                                std::vector<Finding>& findings) {
    ++pass_;
    for (const ApplicationGroup& group : groups) {
        const bool high = isAtWork(group);
        if (!high && highSince_.empty()) continue;
        const std::uint64_t start = oldestStart(group);
        auto held = highSince_.find(InstanceView{group.id, start});
        if (!high) {
            if (held != highSince_.end()) highSince_.erase(held);
            continue;
        }
        if (held == highSince_.end())
            held = highSince_.emplace(Instance{group.id, start}, High{now, pass_}).first;
        held->second.pass = pass_;
        const Date since = held->second.since;
        if (!(now - since >= sustained)) continue;
        Finding finding{"cpu:" + instanceKey(group.id, start),
                        FindingKind::highCPU,
                        group.name + " is working overtime",
                        "80%+ of one CPU core for over a minute. May be intentional.",
                        group.id,
                        {},
                        since};
        appendTargets(group.processes, finding.targets);
        findings.push_back(std::move(finding));
    }
    // Whatever this pass did not see has ended.
    std::erase_if(highSince_, [this](const auto& entry) { return entry.second.pass != pass_; });
}

std::map<std::string, Date> FindingEngine::highSince() const {
    std::map<std::string, Date> since;
    for (const auto& [instance, high] : highSince_)
        since.emplace(instanceKey(instance.groupID, instance.start), high.since);
    return since;
}

std::string FindingEngine::normalizedCommand(std::span<const std::string> arguments) {
    constexpr std::string_view glued = "--port=";
    constexpr std::string_view hidden = "<port>";
    std::string command;
    bool isPort = false;
    bool first = true;
    for (const std::string& argument : arguments) {
        if (!std::exchange(first, false)) command += '\t';
        if (std::exchange(isPort, false)) {
            command += hidden;
        } else if (argument.starts_with(glued)) {
            command.append(glued).append(hidden);
        } else {
            command += argument;
            isPort = argument == "--port" || argument == "-p";
        }
    }
    return command;
}

} // namespace varnet
