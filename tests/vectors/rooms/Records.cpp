#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/CPUWindow.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"
#include "VarnetCore/Monitoring/ProcessTreeNode.h"
#include "VarnetCore/Monitoring/Service.h"
#include "VarnetCore/Monitoring/SystemMemorySnapshot.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {
namespace {

Json window(const Json& input) {
    CPUWindow window;
    Json results = Json::array();
    for (const Json& step : at(input, "steps")) {
        const std::string call = readText(step, "call");
        std::optional<double> result;
        if (call == "record") {
            result =
                window.record(readNumber(step, "value").value_or(0), readNumber(step, "duration").value_or(0),
                              readDate(step, "endingAt").value_or(Date{}));
        } else if (call == "average") {
            result = window.average(readDate(step, "at").value_or(Date{}));
        } else {
            throw std::runtime_error("unknown call " + call);
        }
        results.push_back({{"result", writtenOrNull(result)}, {"count", window.count()}});
    }
    return results;
}

Json group(const Json& input) {
    ApplicationGroup group;
    group.processes = readSampleRefs(at(input, "processes"));
    return {{"cpu", writtenOrNull(group.cpu())},
            {"instantaneousCPU", writtenOrNull(group.instantaneousCPU())},
            {"memory", writtenOrNull(group.memory())},
            {"energyImpact", writtenOrNull(group.energyImpact())},
            {"instantaneousEnergyImpact", writtenOrNull(group.instantaneousEnergyImpact())},
            {"ports", group.ports()},
            {"agents", group.agents()},
            {"incomplete", group.incomplete()},
            {"energyIncomplete", group.energyIncomplete()}};
}

Json service(const Json& input) {
    const Service service{std::make_shared<const ProcessSample>(readSample(at(input, "root"))),
                          readSampleRefs(at(input, "members"))};
    return {{"id", service.id()},
            {"name", service.name()},
            {"project", writtenOrNull(service.project())},
            {"ports", service.ports()},
            {"cpu", writtenOrNull(service.cpu())},
            {"memory", writtenOrNull(service.memory())}};
}

Json tree(const std::vector<ProcessTreeNode>& nodes) {
    Json list = Json::array();
    for (const ProcessTreeNode& node : nodes) {
        if (node.children && node.children->empty()) {
            throw std::runtime_error("a leaf with an empty list of children: " + node.id().id());
        }
        list.push_back(
            {{"id", written(node.id())}, {"children", node.children ? tree(*node.children) : Json()}});
    }
    return list;
}

Json roots(const Json& input) {
    return tree(ProcessTreeNode::roots(readSampleRefs(at(input, "processes"))));
}

Json normalized(const Json& input) {
    MonitorSnapshot snapshot;
    snapshot.logicalCores = readInteger<int>(input, "logicalCores").value_or(0);
    return writtenOrNull(snapshot.normalized(readNumber(input, "value")));
}

MonitorSnapshot snapshotOf(const Json& input) {
    MonitorSnapshot snapshot;
    snapshot.processes = readSampleRefs(at(input, "processes"));
    return snapshot;
}

Json ramAndSwap(const Json& input) {
    const SystemMemorySnapshot memory{readInteger<std::uint64_t>(input, "usedRAM"),
                                      readInteger<std::uint64_t>(input, "compressed"),
                                      readInteger<std::uint64_t>(input, "swapUsed")};
    return writtenOrNull(memory.ramAndSwap());
}

Rules exact() {
    Rules rules;
    rules.exactNumbers = true;
    return rules;
}

const Room room{
    {"CPUWindow", answering(window)},
    {"ApplicationGroup.derived", answering(group)},
    {"Service.derived", answering(service)},
    {"ProcessTreeNode.roots", answering(roots)},
    {"MonitorSnapshot.normalized", answering(normalized)},
    {"MonitorSnapshot.agentCount",
     answering([](const Json& input) -> Json { return snapshotOf(input).agentCount(); })},
    {"MonitorSnapshot.developmentCount",
     answering([](const Json& input) -> Json { return snapshotOf(input).developmentCount(); })},
    {"MonitorSnapshot.processMemory",
     answering([](const Json& input) { return writtenOrNull(snapshotOf(input).processMemory()); })},
    {"SystemMemorySnapshot.ramAndSwap", answering(ramAndSwap)},
    {"ProcessSample.serviceName",
     answering([](const Json& input) -> Json { return readSample(input).serviceName(); })},
    {"ProcessSample.framework",
     answering([](const Json& input) { return writtenOrNull(readSample(input).framework()); })},
    {"ProcessSample.isDevelopment",
     answering([](const Json& input) -> Json { return readSample(input).isDevelopment(); })},
    {"ProcessIdentity.id", answering([](const Json& input) -> Json { return readIdentity(input).id(); })},
    {"ProcessIdentity.startedAt",
     answering([](const Json& input) -> Json { return readIdentity(input).startedAt().seconds; }, exact())},
};

} // namespace
} // namespace varnet::vectors
