#include "VarnetCore/Flame/DockFlameState.h"
#include "VarnetCore/Flame/SustainedPresentation.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RoastJson.h"

namespace varnet::vectors {

template <>
inline constexpr auto lastCase<DockFlameState> = static_cast<DockFlameState>(dockFlameStateCount - 1);
VARNET_RECORD(SustainedPresentation<std::string>, value, severity, candidate, since, last)
VARNET_RECORD(SustainedPresentation<DockFlameState>, value, severity, candidate, since, last)
VARNET_RECORD(DockFlameStateMachine, state, last, presentation)

namespace {

Json sustained(const Json& input) {
    SustainedPresentation<std::string> presentation;
    return mapped(at(input, "steps"), [&](const Json& step) {
        const std::string shown =
            presentation.update(readText(step, "value"), read<int>(step, "severity"), readDate(step, "at"));
        Json result = written(presentation);
        result["result"] = shown;
        return result;
    });
}

Json facts(const Json& input) {
    const auto state = read<DockFlameState>(input, "state");
    return {{"severity", severity(state)}, {"expression", rawValue(expression(state))}};
}

FlameExpression face(const Json& input) {
    return FlameFace::state(read<MascotMood>(input, "mood"), readText(input, "topic"));
}

DockFlameState measured(const Json& input) {
    return measuredFlameState(read<MonitorSnapshot>(input));
}

Json machine(const Json& input) {
    DockFlameStateMachine flame;
    return mapped(at(input, "steps"), [&](const Json& step) {
        flame.update(read<MonitorSnapshot>(step));
        return flame;
    });
}

const Room room{
    {"SustainedPresentation", answering(sustained)},  {"DockFlameState", answering(facts)},
    {"DockFlameState.measured", answering(measured)}, {"FlameExpression.state", answering(face)},
    {"DockFlameStateMachine", answering(machine)},
};

} // namespace
} // namespace varnet::vectors
