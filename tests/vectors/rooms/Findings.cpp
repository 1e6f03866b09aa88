#include "VarnetCore/Findings/FindingEngine.h"
#include "VarnetCore/Findings/RestartDetection.h"
#include "tests/vectors/Operations.h"

namespace varnet::vectors {

VARNET_RECORD(StoppedService, name, project, cwd, identity, date)

namespace {

Json evaluate(const Json& input) {
    FindingEngine engine;
    return mapped(at(input, "steps"), [&](const Json& step) -> Json {
        const std::string op = readText(step, "op");
        std::vector<Finding> findings;
        if (op == "evaluate") {
            findings =
                engine.evaluate(read<std::vector<ApplicationGroup>>(step, "groups"),
                                read<std::vector<Service>>(step, "services"),
                                read<std::vector<SampleRef>>(step, "processes"), readDate(step, "now"));
        } else if (op == "reset") {
            engine.reset();
        } else {
            throw std::runtime_error("unknown op " + op);
        }
        return {{"findings", written(findings)}, {"highSince", written(engine.highSince())}};
    });
}

std::string normalizedCommand(const Json& input) {
    return FindingEngine::normalizedCommand(read<std::vector<std::string>>(input, "arguments"));
}

Json restartDetection(const Json& input) {
    auto stopped = read<std::vector<StoppedService>>(input, "stoppedServices");
    auto findings = read<std::vector<Finding>>(input, "findings");
    RestartDetection::update(stopped, read<std::vector<Service>>(input, "services"),
                             read<std::map<std::string, Date>>(input, "ignored"), readDate(input, "now"),
                             findings);
    return {{"stoppedServices", written(stopped)}, {"findings", written(findings)}};
}

const Room room{
    // Every number is a moment; those of the timers stand under their instances' keys.
    {"FindingEngine", answering(evaluate, {.exactNumbers = true})},
    {"FindingEngine.normalizedCommand", answering(normalizedCommand)},
    {"restartDetection", answering(restartDetection)},
};

} // namespace
} // namespace varnet::vectors
