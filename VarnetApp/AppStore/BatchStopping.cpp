// Stopping a selection: background processes through the engine, then applications one after the other.

#include "VarnetApp/AppStore/StopOperations.h"
#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Engine/StopExecution.h"
#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Findings/BatchStopPlanner.h"
#include "VarnetCore/Findings/PlanningTable.h"
#include "VarnetCore/Findings/StopPlanner.h"
#include "VarnetCore/Findings/StopResults.h"

#include <algorithm>
#include <cerrno>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace varnet {

struct StopOperations::BatchWait {
    struct Asked {
        std::size_t result; ///< its place among the results
        std::unique_ptr<platform::QuittableApplication> application;
    };

    std::vector<Asked> asked;
    Results results;
    Date deadline;
};

void StopOperations::prepareBatchStop(std::span<const BatchStopRequest> requests) {
    if (isBatchStopping_ || isStopping_) return;
    const MonitorSnapshot& snapshot = store_.snapshot();
    auto plan = BatchStopPlanner::make(requests, snapshot, uid_, selfPID_);
    if (!plan) {
        store_.setActionMessage("Some selected items changed or can’t be stopped. Clear the selection and "
                                "review them again. Nothing was stopped.");
        return;
    }
    batchStopResults_.reset();
    batchServices_.clear();
    std::unordered_set<ProcessIdentity> targets;
    if (const auto processPlan = plan->processPlan()) {
        for (const StopTarget& target : processPlan->targets)
            targets.insert(target.identity);
    }
    const PlanningTable table(snapshot);
    for (const Service& service : snapshot.services) {
        if (!targets.contains(service.root->id)) continue;
        if (auto single = StopPlanner::make(service, table, uid_, selfPID_))
            batchServices_.push_back({std::move(*single), service, isForgotten(service)});
    }
    batchStopPlan_ = std::move(*plan);
    emit batchStopChanged();
}

void StopOperations::executeBatchStop(StopForce force) {
    if (store_.isPreview() || isBatchStopping_ || !batchStopPlan_) return;
    std::vector<BatchApplicationStop> applications = batchStopPlan_->applications;
    std::optional<StopPlan> processes = batchStopPlan_->processPlan();
    if (force == StopForce::forced && batchStopResults_) {
        std::erase_if(applications, [&](const BatchApplicationStop& stop) {
            return survivors(std::span(&stop.target, 1), *batchStopResults_).empty();
        });
        if (processes) processes->targets = survivors(processes->targets, *batchStopResults_);
        if (applications.empty() && (!processes || processes->targets.empty())) return;
    }
    isBatchStopping_ = true;
    emit batchStopChanged();
    if (!processes || processes->targets.empty()) {
        askApplications(applications, force, {});
        return;
    }
    execute(std::move(*processes), force,
            [this, applications = std::move(applications), force](const Results& results) {
                askApplications(applications, force, results);
            });
}

void StopOperations::askApplications(const std::vector<BatchApplicationStop>& applications, StopForce force,
                                     Results results) {
    const auto wait = std::make_shared<BatchWait>();
    wait->results = std::move(results);
    for (const BatchApplicationStop& stop : applications)
        ask(stop, force, *wait);
    wait->deadline = store_.clock_.now() + (force == StopForce::forced ? StopExecution::forcedPatience
                                                                       : StopExecution::politePatience);
    watchBatch(wait);
}

void StopOperations::ask(const BatchApplicationStop& stop, StopForce force, BatchWait& wait) {
    const StopTarget& target = stop.target;
    const std::int32_t pid = target.identity.pid;
    const auto close = [&](StopOutcome outcome, std::string detail = {}) {
        wait.results.push_back({target, outcome, std::move(detail)});
    };
    const auto identity = applications_ ? applications_->identity(pid) : std::nullopt;
    if (!identity) {
        const bool gone = applications_ && applications_->exists(pid) == ESRCH;
        return close(gone ? StopOutcome::alreadyStopped : StopOutcome::denied);
    }
    auto application = applications_->find(pid);
    const bool isTheReviewed = identity->start == target.identity.start && identity->uid == target.uid &&
                               target.uid == uid_ && pid != selfPID_ && application &&
                               LexicalPath::standardized(application->bundlePath()) ==
                                   LexicalPath::standardized(stop.application.bundlePath);
    if (!isTheReviewed) return close(StopOutcome::identityChanged);
    const bool accepted =
        force == StopForce::forced ? application->forceTerminate() : application->terminate();
    if (!accepted) {
        if (application->isTerminated()) return close(StopOutcome::alreadyStopped);
        return close(StopOutcome::stillRunning, "The app did not accept the request. Check its windows.");
    }
    wait.asked.push_back({wait.results.size(), std::move(application)});
    close(StopOutcome::stillRunning, "Check the app for a save or confirmation dialog.");
}

void StopOperations::watchBatch(const std::shared_ptr<BatchWait>& wait) {
    std::erase_if(wait->asked, [&](BatchWait::Asked& asked) {
        if (!asked.application->isTerminated()) return false;
        StopResult& result = wait->results[asked.result];
        result.outcome = StopOutcome::stopped;
        result.detail.clear();
        return true;
    });
    if (wait->asked.empty() || store_.clock_.now() >= wait->deadline) {
        finishBatch(wait->results);
        return;
    }
    store_.mainQueue_.postAfter(pause, [this, alive = std::weak_ptr(alive_), wait] {
        if (!alive.expired()) watchBatch(wait);
    });
}

void StopOperations::finishBatch(const Results& later) {
    isBatchStopping_ = false;
    batchStopResults_ = merged(batchStopResults_.value_or(Results{}), later, batchStopPlan_->targets());
    creditBatchServices(*batchStopResults_);
    emit batchStopChanged();
}

void StopOperations::creditBatchServices(std::span<const StopResult> results) {
    for (const BatchService& entry : batchServices_) {
        // Other items of the batch have no say in whether this server is gone.
        const Results own = merged({}, results, entry.plan.targets);
        if (own.size() != entry.plan.targets.size() || !allExited(own)) continue;
        tellCollection(entry.plan, own, entry.forgotten);
        RestartDetection::remember(entry.service, store_.clock_.now(), store_.stoppedServices_);
    }
}

void StopOperations::closeBatchStop() {
    if (isBatchStopping_ || !batchStopPlan_) return;
    batchStopPlan_.reset();
    batchStopResults_.reset();
    batchServices_.clear();
    emit batchStopChanged();
}

} // namespace varnet
