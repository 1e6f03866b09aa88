#include "VarnetCore/Windows/LaunchEvent.h"
#include "VarnetCore/Windows/WindowPresentationRequests.h"
#include "tests/vectors/Operations.h"

namespace varnet::vectors {

VARNET_RECORD(WindowPresentationRequests, launched, actionReady, pending)

namespace {

bool opens(WindowPresentationRequests& state, const Json& step) {
    const std::string op = readText(step, "op");
    if (op == "finishedLaunching") return state.finishedLaunching(readFlag(step, "showWindow"));
    if (op == "registeredWindowAction") return state.registeredWindowAction();
    if (op == "requestOpen") return state.requestOpen();
    throw std::runtime_error("unknown op " + op);
}

Json requests(const Json& input) {
    WindowPresentationRequests state;
    return mapped(at(input, "steps"), [&](const Json& step) {
        const bool opened = opens(state, step);
        Json result = written(state);
        result["opens"] = opened;
        return result;
    });
}

bool showWindow(const Json& input) {
    std::optional<LaunchEvent> event;
    if (const Json& json = at(input, "event"); !json.is_null())
        event = LaunchEvent{readText(json, "eventID"), read<std::optional<std::string>>(json, "prdt")};
    return showsWindow(event, readFlag(input, "hasOnboarded"), readFlag(input, "forceWindow"));
}

const Room room{
    {"WindowPresentationRequests", answering(requests)},
    {"showWindow", answering(showWindow)},
};

} // namespace
} // namespace varnet::vectors
