#include "VarnetCore/Windows/LaunchEvent.h"
#include "VarnetCore/Windows/WindowPresentationRequests.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

Json requests(const Json& input) {
    WindowPresentationRequests state;
    Json results = Json::array();
    for (const Json& step : at(input, "steps")) {
        const std::string op = readText(step, "op");
        bool opens = false;
        if (op == "finishedLaunching") {
            opens = state.finishedLaunching(readFlag(step, "showWindow"));
        } else if (op == "registeredWindowAction") {
            opens = state.registeredWindowAction();
        } else if (op == "requestOpen") {
            opens = state.requestOpen();
        } else {
            throw std::runtime_error("unknown op " + op);
        }
        results.push_back({{"opens", opens},
                           {"launched", state.launched},
                           {"actionReady", state.actionReady},
                           {"pending", state.pending}});
    }
    return results;
}

Json showWindow(const Json& input) {
    std::optional<LaunchEvent> event;
    if (const Json& json = at(input, "event"); !json.is_null()) {
        event = LaunchEvent{readText(json, "eventID"), std::nullopt};
        if (!at(json, "prdt").is_null()) event->propertyData = readText(json, "prdt");
    }
    return showsWindow(event, readFlag(input, "hasOnboarded"), readFlag(input, "forceWindow"));
}

const Room room{
    {"WindowPresentationRequests", answering(requests)},
    {"showWindow", answering(showWindow)},
};

} // namespace
} // namespace varnet::vectors
