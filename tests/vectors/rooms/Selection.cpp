#include "VarnetCore/Findings/BatchRequests.h"
#include "VarnetCore/Findings/StopSelection.h"
#include "tests/vectors/Operations.h"

namespace varnet::vectors {

VARNET_RECORD(StopSelection, items, requests)

namespace {

Json selection(const Json& input) {
    StopSelection selection;
    return mapped(at(input, "steps"), [&](const Json& step) {
        if (readText(step, "op") == "retain") {
            selection.retain(read<std::vector<std::string>>(step, "ids"));
        } else {
            selection.toggle(readText(step, "id"), read<std::vector<BatchStopRequest>>(step, "requests"));
        }
        return written(selection);
    });
}

auto requestsOfGroup(const Json& input) {
    return batchRequests(read<ApplicationGroup>(input, "group"),
                         read<std::vector<Service>>(input, "services"), read<std::uint32_t>(input, "uid"),
                         read<std::int32_t>(input, "selfPID"));
}

auto candidates(const Json& input) {
    return batchCandidates(read<std::vector<ApplicationGroup>>(input, "groups"),
                           read<std::vector<Service>>(input, "services"), read<std::uint32_t>(input, "uid"),
                           read<std::int32_t>(input, "selfPID"));
}

const Room room{
    {"StopSelection", answering(selection)},
    {"batchRequests", answering(requestsOfGroup)},
    {"batchCandidates", answering(candidates)},
};

} // namespace
} // namespace varnet::vectors
