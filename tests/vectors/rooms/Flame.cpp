#include "VarnetCore/Flame/DockFlameState.h"
#include "VarnetCore/Flame/SustainedPresentation.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

Json secondsOrNull(const std::optional<Date>& date) {
    return date ? Json(date->seconds) : Json(nullptr);
}

template <typename Value, typename Write>
Json writtenPresentation(const SustainedPresentation<Value>& presentation, Write write) {
    const auto value = [&](const std::optional<Value>& one) {
        return one ? Json(write(*one)) : Json(nullptr);
    };
    return {{"value", value(presentation.value)},
            {"severity", presentation.severity},
            {"candidate", value(presentation.candidate)},
            {"since", secondsOrNull(presentation.since)},
            {"last", secondsOrNull(presentation.last)}};
}

Json sustained(const Json& input) {
    SustainedPresentation<std::string> presentation;
    Json results = Json::array();
    for (const Json& step : at(input, "steps")) {
        const std::string shown =
            presentation.update(readText(step, "value"), readInteger<int>(step, "severity").value_or(0),
                                readDate(step, "at").value_or(Date{}));
        Json result = writtenPresentation(presentation, [](const std::string& text) { return text; });
        result["result"] = shown;
        results.push_back(std::move(result));
    }
    return results;
}

DockFlameState stateNamed(const std::string& name) {
    for (int i = 0; i < dockFlameStateCount; ++i)
        if (rawValue(static_cast<DockFlameState>(i)) == name) return static_cast<DockFlameState>(i);
    throw std::runtime_error("no flame state: " + name);
}

Json facts(const Json& input) {
    const DockFlameState state = stateNamed(readText(input, "state"));
    return {{"severity", severity(state)}, {"expression", rawValue(expression(state))}};
}

Json face(const Json& input) {
    for (int i = 0; i <= static_cast<int>(MascotMood::relieved); ++i) {
        const auto mood = static_cast<MascotMood>(i);
        if (rawValue(mood) == readText(input, "mood"))
            return rawValue(FlameFace::state(mood, readText(input, "topic")));
    }
    throw std::runtime_error("no mood: " + readText(input, "mood"));
}

Json measured(const Json& input) {
    return rawValue(measuredFlameState(readSnapshot(input)));
}

Json machine(const Json& input) {
    DockFlameStateMachine flame;
    Json results = Json::array();
    for (const Json& step : at(input, "steps")) {
        flame.update(readSnapshot(step));
        results.push_back({{"state", rawValue(flame.state)},
                           {"last", secondsOrNull(flame.last)},
                           {"presentation", writtenPresentation(flame.presentation, [](DockFlameState state) {
                                return rawValue(state);
                            })}});
    }
    return results;
}

const Room room{
    {"SustainedPresentation", answering(sustained)},  {"DockFlameState", answering(facts)},
    {"DockFlameState.measured", answering(measured)}, {"FlameExpression.state", answering(face)},
    {"DockFlameStateMachine", answering(machine)},
};

} // namespace
} // namespace varnet::vectors
