#include "VarnetCore/Findings/BatchStopPlanner.h"
#include "VarnetCore/Findings/StopPlanner.h"
#include "VarnetCore/Findings/StopUnavailableReason.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

std::uint32_t uidOf(const Json& input) {
    return readInteger<std::uint32_t>(input, "uid").value_or(0);
}

std::int32_t selfPIDOf(const Json& input) {
    return readInteger<std::int32_t>(input, "selfPID").value_or(0);
}

MonitorSnapshot snapshotOf(const Json& input) {
    const Json& json = at(input, "snapshot");
    MonitorSnapshot snapshot;
    snapshot.processes = readSampleRefs(at(json, "processes"));
    if (!at(json, "error").is_null()) snapshot.error = readText(json, "error");
    return snapshot;
}

/// What a process given as a number stands for.
const Json& poolOf(const Json& input) {
    return at(at(input, "snapshot"), "processes");
}

const char* nameOf(StopPlanningError error) {
    switch (error) {
    case StopPlanningError::unavailable:
        return "unavailable";
    case StopPlanningError::protectedProcess:
        return "protectedProcess";
    case StopPlanningError::changed:
        return "changed";
    }
    return "";
}

Json written(const StopTarget& target) {
    return {{"identity", vectors::written(target.identity)}, {"uid", target.uid}, {"name", target.name}};
}

Json written(const StopPlan& plan);
Json written(const BatchApplicationStop& stop);

template <typename Records>
Json writtenAll(const Records& records) {
    Json list = Json::array();
    for (const auto& record : records)
        list.push_back(written(record));
    return list;
}

Json written(const StopPlan& plan) {
    return {{"name", plan.name},
            {"project", writtenOrNull(plan.project)},
            {"ports", plan.ports},
            {"targets", writtenAll(plan.targets)},
            {"serviceID", plan.serviceID},
            {"root", vectors::written(plan.root)},
            {"origin", writtenOrNull(plan.origin)}};
}

Json written(const BatchApplicationStop& stop) {
    return {{"application", vectors::written(stop.application)}, {"target", written(stop.target)}};
}

Json written(const BatchStopPlan& plan) {
    const auto processPlan = plan.processPlan();
    return {{"applications", writtenAll(plan.applications)},
            {"processes", writtenAll(plan.processes)},
            {"processPlan", processPlan ? written(*processPlan) : Json()},
            {"targets", writtenAll(plan.targets())}};
}

template <typename Plan>
Json written(const std::expected<Plan, StopPlanningError>& made) {
    if (!made) return {{"error", nameOf(made.error())}};
    return {{"plan", written(*made)}};
}

Json canStopProcess(const Json& input) {
    return StopPlanner::canStopProcess(*readSampleRef(at(input, "process"), poolOf(input)), uidOf(input),
                                       selfPIDOf(input));
}

Json planForProcess(const Json& input) {
    return written(StopPlanner::make(*readSampleRef(at(input, "process"), poolOf(input)), snapshotOf(input),
                                     uidOf(input), selfPIDOf(input)));
}

Json planForService(const Json& input) {
    return written(StopPlanner::make(readService(at(input, "service"), poolOf(input)), snapshotOf(input),
                                     uidOf(input), selfPIDOf(input)));
}

Json planForBatch(const Json& input) {
    return written(BatchStopPlanner::make(readRequests(at(input, "requests")), snapshotOf(input),
                                          uidOf(input), selfPIDOf(input)));
}

Json reasonForProcess(const Json& input) {
    return stopUnavailableReason(*readSampleRef(at(input, "process"), poolOf(input)), uidOf(input),
                                 selfPIDOf(input));
}

Json reasonForGroup(const Json& input) {
    const Json& pool = at(input, "pool");
    return stopUnavailableReason(readGroup(at(input, "group"), pool),
                                 readServices(at(input, "services"), pool), uidOf(input), selfPIDOf(input));
}

const Room room{
    {"StopPlanner.canStopProcess", answering(canStopProcess)},
    {"StopPlanner.make(process)", answering(planForProcess)},
    {"StopPlanner.make(service)", answering(planForService)},
    {"BatchStopPlanner.make", answering(planForBatch)},
    {"stopUnavailableReason(process)", answering(reasonForProcess)},
    {"stopUnavailableReason(group)", answering(reasonForGroup)},
};

} // namespace
} // namespace varnet::vectors
