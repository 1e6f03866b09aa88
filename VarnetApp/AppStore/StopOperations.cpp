#include "VarnetApp/AppStore/StopOperations.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetCore/Findings/BatchRequests.h"
#include "VarnetCore/Findings/StopPlanner.h"
#include "VarnetCore/Findings/StopResults.h"
#include "VarnetCore/Findings/StopUnavailableReason.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace varnet {

namespace {

constexpr std::int32_t noProcess = -1; // prepared data knows nothing of this program

} // namespace

StopOperations::StopOperations(VarnetStore& store, std::uint32_t uid,
                               platform::ApplicationQuitting* applications)
    : store_(store), uid_(uid), selfPID_(store.isPreview() ? noProcess : getpid()),
      applications_(applications) {}

StopOperations::~StopOperations() = default;

// One service or process.

void StopOperations::prepareStop(const Service& service) {
    if (isStopping_) return;
    if (store_.isPreview()) {
        store_.setActionMessage("Preview data — no processes can be stopped.");
        return;
    }
    const auto plan = StopPlanner::make(service, store_.snapshot(), uid_, selfPID_);
    if (!plan) {
        store_.setActionMessage(
            "This service changed or cannot be stopped by this user. Refresh and inspect it again.");
        return;
    }
    review(*plan, true, isForgotten(service));
}

void StopOperations::prepareStop(const ProcessSample& process) {
    if (isStopping_) return;
    if (store_.isPreview()) {
        store_.setActionMessage("Preview data — no processes can be stopped.");
        return;
    }
    const auto plan = StopPlanner::make(process, store_.snapshot(), uid_, selfPID_);
    if (!plan) {
        store_.setActionMessage(
            "This process changed or cannot be stopped by this user. Refresh and inspect it again.");
        return;
    }
    review(*plan, false, false);
}

void StopOperations::reviewStop(const ApplicationGroup& group) {
    switch (group.kind) {
    case GroupKind::application:
        if (group.application) quit(*group.application, StopForce::polite);
        break;
    case GroupKind::project:
        prepareBatchStop(batchRequests(group));
        break;
    case GroupKind::unassigned:
        if (!group.processes.empty()) prepareStop(*group.processes.front());
        break;
    case GroupKind::system:
        break;
    }
}

void StopOperations::review(StopPlan plan, bool isService, bool forgotten) {
    stopPlan_ = std::move(plan);
    stopResults_.reset();
    stopIsService_ = isService;
    stopWasForgotten_ = forgotten;
    emit stopChanged();
}

void StopOperations::executeStop(StopForce force) {
    if (!stopPlan_ || isStopping_ || store_.isPreview()) return;
    StopPlan plan = *stopPlan_;
    if (force == StopForce::forced && stopResults_) {
        plan.targets = survivors(plan.targets, *stopResults_);
        if (plan.targets.empty()) return;
    }
    isStopping_ = true;
    // Its service leaves the picture while it is being stopped.
    const Service* const published = publishedService(plan.serviceID);
    std::optional<Service> service = published ? std::optional(*published) : std::nullopt;
    execute(std::move(plan), force,
            [this, service = std::move(service)](const Results& results) { finishStop(service, results); });
    emit stopChanged();
}

void StopOperations::finishStop(const std::optional<Service>& service, const Results& later) {
    isStopping_ = false;
    const StopPlan plan = *stopPlan_;
    const Results results = merged(stopResults_.value_or(Results{}), later, plan.targets);
    stopResults_ = results;
    if (allExited(results)) {
        store_.setActionMessage(QString::fromStdString(plan.name + " has left the building."));
        if (stopIsService_) tellCollection(plan, results, stopWasForgotten_);
        if (service) RestartDetection::remember(*service, store_.clock_.now(), store_.stoppedServices_);
    }
    emit stopChanged();
}

void StopOperations::closeStop() {
    if (isStopping_ || !stopPlan_) return;
    stopPlan_.reset();
    stopResults_.reset();
    stopIsService_ = false;
    stopWasForgotten_ = false;
    emit stopChanged();
}

// What may be stopped.

std::vector<BatchStopRequest> StopOperations::batchRequests(const ApplicationGroup& group) const {
    return varnet::batchRequests(group, store_.snapshot().services, uid_, selfPID_);
}

std::vector<BatchStopRequest> StopOperations::batchRequests(const Service& service) const {
    return varnet::batchRequests(service, uid_, selfPID_);
}

std::map<std::string, std::vector<BatchStopRequest>>
StopOperations::batchCandidates(std::span<const ApplicationGroup> groups) const {
    return varnet::batchCandidates(groups, store_.snapshot().services, uid_, selfPID_);
}

bool StopOperations::canStop(const ProcessSample& process) const {
    return StopPlanner::canStopProcess(process, uid_, selfPID_);
}

std::string StopOperations::stopUnavailableReason(const ProcessSample& process) const {
    return varnet::stopUnavailableReason(process, uid_, selfPID_);
}

std::string StopOperations::stopUnavailableReason(const ApplicationGroup& group) const {
    return varnet::stopUnavailableReason(group, store_.snapshot().services, uid_, selfPID_);
}

bool StopOperations::isForgotten(const Service& service) const {
    return std::ranges::any_of(store_.snapshot().findings, [&](const Finding& finding) {
        return finding.kind == FindingKind::forgotten &&
               std::ranges::find(finding.targets, service.root->id) != finding.targets.end();
    });
}

const Service* StopOperations::publishedService(const std::string& id) const {
    const auto& services = store_.snapshot().services;
    const auto found =
        std::ranges::find_if(services, [&](const Service& service) { return service.id() == id; });
    return found == services.end() ? nullptr : &*found;
}

void StopOperations::tellCollection(const StopPlan& plan, const Results& results, bool forgotten) const {
    if (store_.collaborators_.stopped) store_.collaborators_.stopped(plan, results, forgotten);
}

void StopOperations::execute(StopPlan plan, StopForce force, std::function<void(const Results&)> then) {
    SerialQueue& engineQueue = store_.engineQueue_;
    engineQueue.post([engine = store_.engine_.get(), &engineQueue, &mainQueue = store_.mainQueue_,
                      alive = std::weak_ptr(alive_), plan = std::move(plan), force,
                      then = std::move(then)]() mutable {
        engine->execute(std::move(plan), force, engineQueue,
                        [&mainQueue, alive, then = std::move(then)](const Results& results) {
                            mainQueue.post([alive, then, results] {
                                if (!alive.expired()) then(results);
                            });
                        });
    });
}

void StopOperations::show(Moment moment) {
    if (!store_.isPreview()) return;
    stopPlan_ = std::move(moment.stopPlan);
    stopResults_ = std::move(moment.stopResults);
    isStopping_ = moment.isStopping;
    batchStopPlan_ = std::move(moment.batchStopPlan);
    batchStopResults_ = std::move(moment.batchStopResults);
    isBatchStopping_ = moment.isBatchStopping;
    quitRequest_ = std::move(moment.quitRequest);
    emit stopChanged();
    emit batchStopChanged();
    emit quitRequestChanged();
}

} // namespace varnet
