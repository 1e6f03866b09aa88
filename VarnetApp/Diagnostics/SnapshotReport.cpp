#include "VarnetApp/Diagnostics/SnapshotReport.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <ranges>
#include <unordered_map>

namespace varnet::SnapshotReport {

namespace {

using Json = nlohmann::ordered_json;

template <class Value>
Json orNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

Json identities(const std::vector<SampleRef>& processes) {
    Json list = Json::array();
    for (const SampleRef& process : processes)
        list.push_back(process->id.id());
    return list;
}

std::optional<std::string> framework(const ApplicationGroup& group) {
    for (const SampleRef& process : group.processes) {
        if (auto name = process->framework()) return name;
    }
    return std::nullopt;
}

Json json(const std::shared_ptr<const Project>& project) {
    if (!project) return nullptr;
    return {{"root", project->root},
            {"repository", project->repository},
            {"name", project->name},
            {"worktree", project->worktree}};
}

Json json(const std::shared_ptr<const Attribution>& attribution) {
    if (!attribution) return nullptr;
    return {{"agent", attribution->agent},
            {"origin", attribution->origin.id()},
            {"confidence", rawValue(attribution->confidence)},
            {"reason", attribution->reason},
            {"exitedAt", attribution->exitedAt ? Json(attribution->exitedAt->seconds) : Json(nullptr)}};
}

Json json(const ApplicationGroup& group) {
    return {{"id", group.id},
            {"name", group.name},
            {"subtitle", group.subtitle},
            {"kind", rawValue(group.kind)},
            {"cpu", orNull(group.cpu())},
            {"memory", orNull(group.memory())},
            {"ports", group.ports()},
            {"agents", group.agents()},
            {"framework", orNull(framework(group))},
            {"processes", identities(group.processes)}};
}

Json json(const Service& service) {
    return {{"id", service.id()},
            {"name", service.name()},
            {"project", json(service.project())},
            {"ports", service.ports()},
            {"members", identities(service.members)},
            {"attribution", json(service.root->attribution)}};
}

Json json(const Finding& finding) {
    Json targets = Json::array();
    for (const ProcessIdentity& target : finding.targets)
        targets.push_back(target.id());
    return {{"id", finding.id},
            {"kind", rawValue(finding.kind)},
            {"title", finding.title},
            {"explanation", finding.explanation},
            {"groupID", orNull(finding.groupID)},
            {"targets", targets},
            {"firstSeen", finding.firstSeen.seconds}};
}

Json json(const Fan& fan) {
    return {{"id", fan.id}, {"rpm", fan.rpm}, {"maximum", orNull(fan.maximum)}};
}

template <class Records>
Json list(const Records& records) {
    Json result = Json::array();
    for (const auto& record : records)
        result.push_back(json(record));
    return result;
}

/// Every process stands in exactly one group.
bool uniqueMembership(const MonitorSnapshot& snapshot) {
    std::unordered_map<ProcessIdentity, int> groupsOf;
    for (const SampleRef& process : snapshot.processes)
        groupsOf.emplace(process->id, 0);
    for (const ApplicationGroup& group : snapshot.groups) {
        for (const SampleRef& process : group.processes)
            ++groupsOf[process->id];
    }
    return groupsOf.size() == snapshot.processes.size() &&
           std::ranges::all_of(groupsOf | std::views::values, [](int count) { return count == 1; });
}

std::string percent(const std::optional<double>& value) {
    return value ? fmt::format("{:.1f} %", *value) : "—";
}

std::string bytes(const std::optional<std::uint64_t>& value) {
    if (!value) return "—";
    const double megabytes = static_cast<double>(*value) / 1e6;
    return megabytes < 1000 ? fmt::format("{:.0f} MB", megabytes)
                            : fmt::format("{:.1f} GB", megabytes / 1000);
}

std::string portList(const std::vector<int>& ports) {
    return ports.empty() ? "—" : fmt::format("{}", fmt::join(ports, ", "));
}

} // namespace

Json json(const MonitorSnapshot& snapshot) {
    return {
        {"date", snapshot.date.seconds},
        {"error", orNull(snapshot.error)},
        {"processes", snapshot.processes.size()},
        {"processesWithCPU",
         std::ranges::count_if(snapshot.processes, [](const SampleRef& p) { return p->cpu.has_value(); })},
        {"processesWithMemory",
         std::ranges::count_if(snapshot.processes, [](const SampleRef& p) { return p->memory.has_value(); })},
        {"uniqueMembership", uniqueMembership(snapshot)},
        {"developmentProcesses", snapshot.developmentCount()},
        {"agents", snapshot.agentCount()},
        {"logicalCores", snapshot.logicalCores},
        {"wholeMacCPU", orNull(snapshot.systemCPU)},
        {"usedRAMBytes", orNull(snapshot.systemMemory.usedRAM)},
        {"physicalRAMBytes", snapshot.physicalMemory > 0 ? Json(snapshot.physicalMemory) : Json(nullptr)},
        {"compressedRAMBytes", orNull(snapshot.systemMemory.compressed)},
        {"swapUsedBytes", orNull(snapshot.systemMemory.swapUsed)},
        {"processFootprintBytes", orNull(snapshot.processMemory())},
        {"thermal", rawValue(snapshot.thermal)},
        {"fanAvailability", rawValue(snapshot.fans.availability)},
        {"fans", list(snapshot.fans.fans)},
        {"findings", list(snapshot.findings)},
        {"groups", list(snapshot.groups)},
        {"services", list(snapshot.services)}};
}

std::string text(const Json& report) {
    return report.dump(2, ' ', false, Json::error_handler_t::replace);
}

std::string page(const MonitorSnapshot& snapshot) {
    constexpr std::size_t shownGroups = 12;
    std::string page = fmt::format("CPU {} of {} cores   memory {} of {}   swap {}   {} processes\n",
                                   percent(snapshot.systemCPU), snapshot.logicalCores,
                                   bytes(snapshot.systemMemory.usedRAM), bytes(snapshot.physicalMemory),
                                   bytes(snapshot.systemMemory.swapUsed), snapshot.processes.size());
    page += "\nBusiest\n";
    for (const ApplicationGroup& group : snapshot.groups | std::views::take(shownGroups)) {
        page += fmt::format("  {:>8}  {:>8}  {}  ({})\n", percent(group.cpu()), bytes(group.memory()),
                            group.name, group.subtitle);
    }
    page += "\nServers\n";
    for (const Service& service : snapshot.services) {
        const auto& attribution = service.root->attribution;
        page += fmt::format("  {}  ports {}  {}  {}\n", service.name(), portList(service.ports()),
                            service.project() ? service.project()->name : "no project",
                            attribution ? "started by " + attribution->agent : "");
    }
    if (snapshot.services.empty()) page += "  none\n";
    return page;
}

} // namespace varnet::SnapshotReport
