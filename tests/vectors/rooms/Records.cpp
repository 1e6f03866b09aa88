#include "VarnetCore/Monitoring/CPUWindow.h"
#include "VarnetCore/Monitoring/ProcessTreeNode.h"
#include "tests/vectors/Operations.h"

namespace varnet::vectors {
namespace {

Json window(const Json& input) {
    CPUWindow window;
    return mapped(at(input, "steps"), [&](const Json& step) -> Json {
        const std::string call = readText(step, "call");
        std::optional<double> result;
        if (call == "record") {
            result = window.record(read<double>(step, "value"), read<double>(step, "duration"),
                                   readDate(step, "endingAt"));
        } else if (call == "average") {
            result = window.average(readDate(step, "at"));
        } else {
            throw std::runtime_error("unknown call " + call);
        }
        return {{"result", written(result)}, {"count", window.count()}};
    });
}

Json group(const Json& input) {
    const auto group = read<ApplicationGroup>(input);
    return {{"cpu", written(group.cpu())},
            {"instantaneousCPU", written(group.instantaneousCPU())},
            {"memory", written(group.memory())},
            {"energyImpact", written(group.energyImpact())},
            {"instantaneousEnergyImpact", written(group.instantaneousEnergyImpact())},
            {"ports", group.ports()},
            {"agents", group.agents()},
            {"incomplete", group.incomplete()},
            {"energyIncomplete", group.energyIncomplete()}};
}

Json service(const Json& input) {
    const auto service = read<Service>(input);
    return {
        {"id", service.id()},       {"name", service.name()},        {"project", written(service.project())},
        {"ports", service.ports()}, {"cpu", written(service.cpu())}, {"memory", written(service.memory())}};
}

Json tree(const std::vector<ProcessTreeNode>& nodes) {
    return mapped(nodes, [](const ProcessTreeNode& node) -> Json {
        if (node.children && node.children->empty())
            throw std::runtime_error("a leaf with an empty list of children: " + node.id().id());
        return {{"id", written(node.id())}, {"children", node.children ? tree(*node.children) : Json()}};
    });
}

Json roots(const Json& input) {
    return tree(ProcessTreeNode::roots(read<std::vector<SampleRef>>(input, "processes")));
}

std::optional<double> normalized(const Json& input) {
    MonitorSnapshot snapshot;
    snapshot.logicalCores = read<int>(input, "logicalCores");
    return snapshot.normalized(read<std::optional<double>>(input, "value"));
}

const Room room{
    {"CPUWindow", answering(window)},
    {"ApplicationGroup.derived", answering(group)},
    {"Service.derived", answering(service)},
    {"ProcessTreeNode.roots", answering(roots)},
    {"MonitorSnapshot.normalized", answering(normalized)},
    {"MonitorSnapshot.agentCount", asking(&MonitorSnapshot::agentCount)},
    {"MonitorSnapshot.developmentCount", asking(&MonitorSnapshot::developmentCount)},
    {"MonitorSnapshot.processMemory", asking(&MonitorSnapshot::processMemory)},
    {"SystemMemorySnapshot.ramAndSwap", asking(&SystemMemorySnapshot::ramAndSwap)},
    {"ProcessSample.serviceName", asking(&ProcessSample::serviceName)},
    {"ProcessSample.framework", asking(&ProcessSample::framework)},
    {"ProcessSample.isDevelopment", asking(&ProcessSample::isDevelopment)},
    {"ProcessIdentity.id", asking(&ProcessIdentity::id)},
    {"ProcessIdentity.startedAt", asking(&ProcessIdentity::startedAt, {.exactNumbers = true})},
};

} // namespace
} // namespace varnet::vectors
