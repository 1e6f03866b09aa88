#include "VarnetCore/Findings/StopPlan.h"

#include <unordered_set>
#include <utility>

namespace varnet {

std::optional<StopPlan> BatchStopPlan::processPlan() const {
    if (processes.empty()) return std::nullopt;
    StopPlan plan = processes.front();
    plan.name = "Selected processes";
    plan.targets.clear();
    std::unordered_set<ProcessIdentity> named;
    for (const StopPlan& one : processes) {
        for (const StopTarget& target : one.targets) {
            if (named.insert(target.identity).second) plan.targets.push_back(target);
        }
    }
    return plan;
}

std::vector<StopTarget> BatchStopPlan::targets() const {
    std::vector<StopTarget> all;
    all.reserve(applications.size());
    for (const BatchApplicationStop& application : applications)
        all.push_back(application.target);
    if (std::optional<StopPlan> plan = processPlan()) {
        for (StopTarget& target : plan->targets)
            all.push_back(std::move(target));
    }
    return all;
}

std::string_view rawValue(StopOutcome outcome) noexcept {
    switch (outcome) {
    case StopOutcome::stopped:
        return "stopped";
    case StopOutcome::alreadyStopped:
        return "alreadyStopped";
    case StopOutcome::stillRunning:
        return "stillRunning";
    case StopOutcome::identityChanged:
        return "identityChanged";
    case StopOutcome::denied:
        return "denied";
    case StopOutcome::failed:
        return "failed";
    }
    return {};
}

} // namespace varnet
