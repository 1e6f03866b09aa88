#include "VarnetCore/Sensors/FanStateMachine.h"
#include "tests/vectors/Operations.h"

namespace varnet::vectors {

VARNET_RECORD(FanStateMachine, level, candidate, candidateSince, hadZero, positiveSince, lastDate)

namespace {

Json machine(const Json& input) {
    FanStateMachine fans;
    return mapped(at(input, "steps"), [&](const Json& step) -> Json {
        std::optional<FanSnapshot> snapshot;
        if (readText(step, "call") == "reset") {
            fans.reset();
        } else {
            const auto seen = read<FanSnapshot>(step);
            snapshot = fans.update(seen.fans, seen.availability, readDate(step, "now"));
        }
        return {{"snapshot", written(snapshot)}, {"state", written(fans)}};
    });
}

const Room room{
    {"Fan.ratio", asking(&Fan::ratio)},
    {"FanSnapshot.fastest", asking(&FanSnapshot::fastest)},
    {"FanStateMachine", answering(machine)},
};

} // namespace
} // namespace varnet::vectors
