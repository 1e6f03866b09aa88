#include "VarnetCore/Findings/StopPlanner.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

Json canStopProcess(const Json& input) {
    return StopPlanner::canStopProcess(readSample(at(input, "process")),
                                       readInteger<std::uint32_t>(input, "uid").value_or(0),
                                       readInteger<std::int32_t>(input, "selfPID").value_or(0));
}

const Room room{{"StopPlanner.canStopProcess", answering(canStopProcess)}};

} // namespace
} // namespace varnet::vectors
