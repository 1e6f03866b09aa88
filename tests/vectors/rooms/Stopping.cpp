#include "VarnetCore/Findings/BatchStopPlanner.h"
#include "VarnetCore/Findings/StopPlanner.h"
#include "VarnetCore/Findings/StopUnavailableReason.h"
#include "tests/vectors/Operations.h"

namespace varnet::vectors {

// Plans without what is new in each.
VARNET_RECORD(StopPlan, name, project, ports, targets, serviceID, root, origin)
VARNET_RECORD(BatchApplicationStop, application, target)
VARNET_RECORD(BatchStopPlan, applications, processes, processPlan, targets)

namespace {

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

/// Runs a planner or a question about this item for the user and the program of the input.
template <typename Item, typename Ask>
Check about(const char* key, Ask ask) {
    return answering([key, ask](const Json& input) -> Json {
        const auto answer = ask(read<Item>(input, key), input, read<std::uint32_t>(input, "uid"),
                                read<std::int32_t>(input, "selfPID"));
        if constexpr (requires { answer.error(); }) {
            if (!answer) return {{"error", nameOf(answer.error())}};
            return {{"plan", written(*answer)}};
        } else {
            return written(answer);
        }
    });
}

MonitorSnapshot snapshotOf(const Json& input) {
    return read<MonitorSnapshot>(input, "snapshot");
}

const Room room{
    {"StopPlanner.canStopProcess",
     about<ProcessSample>("process",
                          [](const auto& process, const Json&, auto uid, auto self) {
                              return StopPlanner::canStopProcess(process, uid, self);
                          })},
    {"StopPlanner.make(process)",
     about<ProcessSample>("process",
                          [](const auto& process, const Json& input, auto uid, auto self) {
                              return StopPlanner::make(process, snapshotOf(input), uid, self);
                          })},
    {"StopPlanner.make(service)",
     about<Service>("service",
                    [](const auto& service, const Json& input, auto uid, auto self) {
                        return StopPlanner::make(service, snapshotOf(input), uid, self);
                    })},
    {"BatchStopPlanner.make", about<std::vector<BatchStopRequest>>(
                                  "requests",
                                  [](const auto& requests, const Json& input, auto uid, auto self) {
                                      return BatchStopPlanner::make(requests, snapshotOf(input), uid, self);
                                  })},
    {"stopUnavailableReason(process)",
     about<ProcessSample>("process", [](const auto& process, const Json&, auto uid,
                                        auto self) { return stopUnavailableReason(process, uid, self); })},
    {"stopUnavailableReason(group)",
     about<ApplicationGroup>("group",
                             [](const auto& group, const Json& input, auto uid, auto self) {
                                 return stopUnavailableReason(
                                     group, read<std::vector<Service>>(input, "services"), uid, self);
                             })},
};

} // namespace
} // namespace varnet::vectors
