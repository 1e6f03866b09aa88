#include "VarnetCore/Findings/BatchStopPlanner.h"

#include "VarnetCore/Findings/PlanningTable.h"
#include "VarnetCore/Findings/StopPlanner.h"

#include <optional>
#include <unordered_set>
#include <utility>
#include <variant>

namespace varnet::BatchStopPlanner {
namespace {

bool isAsReviewed(const ProcessSample& process, const ApplicationDescriptor& reviewed) noexcept {
    return process.id.pid == reviewed.pid &&
           (!reviewed.processStart || *reviewed.processStart == process.id.start) && process.application &&
           process.application->bundlePath == reviewed.bundlePath && process.application->pid == reviewed.pid;
}

/// Takes one request after the other into a plan.
class Batch {
public:
    Batch(const PlanningTable& table, std::uint32_t uid, std::int32_t selfPID)
        : table_(table), uid_(uid), selfPID_(selfPID) {}

    /// Empty when the request was taken in.
    std::optional<StopPlanningError> add(const BatchStopRequest::Process& request) {
        if (!table_.find(request.identity)) return StopPlanningError::changed;
        if (!processes_.insert(request.identity).second) return std::nullopt;
        auto made = StopPlanner::make(request.identity, table_, uid_, selfPID_);
        if (!made) return made.error();
        plan.processes.push_back(*std::move(made));
        return std::nullopt;
    }

    std::optional<StopPlanningError> add(const BatchStopRequest::Application& request) {
        const SampleRef* found = table_.find(request.identity);
        if (!found || !isAsReviewed(**found, request.application)) return StopPlanningError::changed;
        const ProcessSample& process = **found;
        // Not StopPlanner's protection: an application may be quit though it is one.
        if (process.uid != uid_ || process.isSystem || process.id.pid < 2 || process.id.pid == selfPID_) {
            return StopPlanningError::protectedProcess;
        }
        if (applications_.insert(process.id).second) {
            plan.applications.push_back(
                {request.application, {process.id, process.uid, request.application.name}});
        }
        return std::nullopt;
    }

    BatchStopPlan plan;

private:
    const PlanningTable& table_;
    const std::uint32_t uid_;
    const std::int32_t selfPID_;
    std::unordered_set<ProcessIdentity> processes_;
    std::unordered_set<ProcessIdentity> applications_;
};

} // namespace

std::expected<BatchStopPlan, StopPlanningError> make(std::span<const BatchStopRequest> requests,
                                                     const MonitorSnapshot& snapshot, std::uint32_t uid,
                                                     std::int32_t selfPID) {
    if (snapshot.error || requests.empty()) return std::unexpected(StopPlanningError::unavailable);
    const PlanningTable table(snapshot);
    Batch batch(table, uid, selfPID);
    for (const BatchStopRequest& request : requests) {
        const auto error = std::visit([&](const auto& item) { return batch.add(item); }, request.item);
        if (error) return std::unexpected(*error);
    }
    batch.plan.id = Uuid::random();
    if (batch.plan.targets().empty()) return std::unexpected(StopPlanningError::unavailable);
    return std::move(batch.plan);
}

} // namespace varnet::BatchStopPlanner
