#include "VarnetCore/Findings/FindingEngine.h"
#include "VarnetCore/Findings/RestartDetection.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

Date nowOf(const Json& json) {
    return readDate(json, "now").value_or(Date{});
}

Json writtenFindings(const std::vector<Finding>& findings) {
    Json list = Json::array();
    for (const Finding& finding : findings)
        list.push_back(written(finding));
    return list;
}

Json evaluate(const Json& input) {
    FindingEngine engine;
    const Json& pool = at(input, "pool");
    Json results = Json::array();
    for (const Json& step : at(input, "steps")) {
        const std::string op = readText(step, "op");
        std::vector<Finding> findings;
        if (op == "evaluate") {
            findings = engine.evaluate(readGroups(at(step, "groups"), pool),
                                       readServices(at(step, "services"), pool),
                                       readSampleRefs(at(step, "processes"), pool), nowOf(step));
        } else if (op == "reset") {
            engine.reset();
        } else {
            throw std::runtime_error("unknown op " + op);
        }
        Json highSince = Json::object();
        for (const auto& [key, since] : engine.highSince())
            highSince[key] = since.seconds;
        results.push_back({{"findings", writtenFindings(findings)}, {"highSince", std::move(highSince)}});
    }
    return results;
}

Json normalizedCommand(const Json& input) {
    return FindingEngine::normalizedCommand(readTexts(input, "arguments"));
}

std::optional<std::string> optionalText(const Json& json, const char* key) {
    return at(json, key).is_null() ? std::nullopt : std::optional(readText(json, key));
}

Json written(const StoppedService& stopped) {
    return {{"name", stopped.name},
            {"project", writtenOrNull(stopped.project)},
            {"cwd", writtenOrNull(stopped.cwd)},
            {"identity", vectors::written(stopped.identity)},
            {"date", stopped.date.seconds}};
}

Json restartDetection(const Json& input) {
    std::vector<StoppedService> stopped;
    for (const Json& json : at(input, "stoppedServices")) {
        stopped.push_back({readText(json, "name"), optionalText(json, "project"), optionalText(json, "cwd"),
                           readIdentity(at(json, "identity")), readDate(json, "date").value_or(Date{})});
    }
    std::map<std::string, Date> ignored;
    for (const auto& [id, date] : at(input, "ignored").items())
        ignored[id] = Date{date.get<double>()};
    std::vector<Finding> findings;
    for (const Json& json : at(input, "findings"))
        findings.push_back(readFinding(json));
    RestartDetection::update(stopped, readServices(at(input, "services"), at(input, "pool")), ignored,
                             nowOf(input), findings);
    Json remaining = Json::array();
    for (const StoppedService& one : stopped)
        remaining.push_back(written(one));
    return {{"stoppedServices", std::move(remaining)}, {"findings", writtenFindings(findings)}};
}

/// Every number is a moment; those of the timers stand under their instances' keys.
Rules exact() {
    Rules rules;
    rules.exactNumbers = true;
    return rules;
}

const Room room{
    {"FindingEngine", answering(evaluate, exact())},
    {"FindingEngine.normalizedCommand", answering(normalizedCommand)},
    {"restartDetection", answering(restartDetection)},
};

} // namespace
} // namespace varnet::vectors
