#include "VarnetCore/Findings/BatchRequests.h"
#include "VarnetCore/Findings/StopSelection.h"
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

Json writtenItems(const std::map<std::string, std::vector<BatchStopRequest>>& items) {
    Json json = Json::object();
    for (const auto& [id, requests] : items)
        json[id] = written(requests);
    return json;
}

Json selection(const Json& input) {
    StopSelection selection;
    Json results = Json::array();
    for (const Json& step : at(input, "steps")) {
        if (readText(step, "op") == "retain") {
            selection.retain(readTexts(step, "ids"));
        } else {
            selection.toggle(readText(step, "id"), readRequests(at(step, "requests")));
        }
        results.push_back(
            {{"items", writtenItems(selection.items)}, {"requests", written(selection.requests())}});
    }
    return results;
}

Json requestsOfGroup(const Json& input) {
    const Json& pool = at(input, "pool");
    return written(batchRequests(readGroup(at(input, "group"), pool),
                                 readServices(at(input, "services"), pool), uidOf(input), selfPIDOf(input)));
}

Json candidates(const Json& input) {
    const Json& pool = at(input, "pool");
    return writtenItems(batchCandidates(readGroups(at(input, "groups"), pool),
                                        readServices(at(input, "services"), pool), uidOf(input),
                                        selfPIDOf(input)));
}

const Room room{
    {"StopSelection", answering(selection)},
    {"batchRequests", answering(requestsOfGroup)},
    {"batchCandidates", answering(candidates)},
};

} // namespace
} // namespace varnet::vectors
