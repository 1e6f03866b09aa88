#include "tests/vectors/RecordJson.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>
#include <variant>

namespace varnet::vectors {
namespace {

template <typename Record, typename Reader>
std::shared_ptr<const Record> readShared(const Json& object, const char* key, Reader read) {
    const Json& json = at(object, key);
    return json.is_null() ? nullptr : std::make_shared<const Record>(read(json));
}

ProcessSample readPooled(const Json& json, const Json& pool) {
    return readSample(json.is_number_integer() ? pool.at(json.get<std::size_t>()) : json);
}

/// A case by its raw string; the first one where there is none.
template <typename Case>
Case readCase(const Json& object, const char* key, std::initializer_list<Case> cases) {
    const std::string text = readText(object, key);
    if (text.empty()) return *cases.begin();
    for (const Case one : cases) {
        if (text == rawValue(one)) return one;
    }
    throw std::runtime_error(std::string("unknown ") + key + ": " + text);
}

} // namespace

const Json& at(const Json& object, const char* key) {
    static const Json nothing;
    const auto found = object.find(key);
    return found == object.end() ? nothing : *found;
}

std::string readText(const Json& object, const char* key) {
    const Json& json = at(object, key);
    return json.is_null() ? std::string() : json.get<std::string>();
}

std::vector<std::string> readTexts(const Json& object, const char* key) {
    const Json& json = at(object, key);
    return json.is_null() ? std::vector<std::string>() : json.get<std::vector<std::string>>();
}

bool readFlag(const Json& object, const char* key) {
    const Json& json = at(object, key);
    return !json.is_null() && json.get<bool>();
}

std::optional<double> readNumber(const Json& object, const char* key) {
    const Json& json = at(object, key);
    if (json.is_null()) return std::nullopt;
    const auto number = numberOf(json);
    if (!number) throw std::runtime_error(std::string(key) + " is no number: " + json.dump());
    return number;
}

std::optional<Date> readDate(const Json& object, const char* key) {
    const auto seconds = readNumber(object, key);
    return seconds ? std::optional(Date{*seconds}) : std::nullopt;
}

ProcessIdentity readIdentity(const Json& json) {
    return {readInteger<std::uint64_t>(json, "boot").value_or(0),
            readInteger<std::int32_t>(json, "pid").value_or(0),
            readInteger<std::uint64_t>(json, "start").value_or(0)};
}

std::unordered_set<ProcessIdentity> readIdentities(const Json& list) {
    std::unordered_set<ProcessIdentity> identities;
    for (const Json& json : list)
        identities.insert(readIdentity(json));
    return identities;
}

Attribution readAttribution(const Json& json) {
    const auto confidence = confidenceFromRawValue(readText(json, "confidence"));
    if (!confidence) throw std::runtime_error("unknown confidence: " + json.dump());
    return {readText(json, "agent"), readIdentity(at(json, "origin")), *confidence, readText(json, "reason"),
            readDate(json, "exitedAt")};
}

Project readProject(const Json& json) {
    return {readText(json, "root"), readText(json, "repository"), readText(json, "name"),
            readText(json, "worktree")};
}

ApplicationDescriptor readApplication(const Json& json) {
    return {readText(json, "bundlePath"), readText(json, "bundleID"), readText(json, "name"),
            readInteger<std::int32_t>(json, "pid").value_or(0),
            readInteger<std::uint64_t>(json, "processStart")};
}

ProcessSample readSample(const Json& json) {
    ProcessSample sample;
    sample.id = readIdentity(at(json, "id"));
    sample.parentPID = readInteger<std::int32_t>(json, "parentPID").value_or(0);
    sample.uid = readInteger<std::uint32_t>(json, "uid").value_or(0);
    sample.name = readText(json, "name");
    sample.executable = readText(json, "executable");
    sample.arguments = readTexts(json, "arguments");
    if (!at(json, "cwd").is_null()) sample.cwd = readText(json, "cwd");
    sample.cpu = readNumber(json, "cpu");
    sample.averageCPU = readNumber(json, "averageCPU");
    sample.memory = readInteger<std::uint64_t>(json, "memory");
    sample.energyImpact = readNumber(json, "energyImpact");
    sample.instantaneousEnergyImpact = readNumber(json, "instantaneousEnergyImpact");
    if (const Json& ports = at(json, "ports"); !ports.is_null()) sample.ports = ports.get<std::vector<int>>();
    sample.portsAvailable = readFlag(json, "portsAvailable");
    sample.project = readShared<Project>(json, "project", readProject);
    sample.attribution = readShared<Attribution>(json, "attribution", readAttribution);
    sample.application = readShared<ApplicationDescriptor>(json, "application", readApplication);
    sample.isSystem = readFlag(json, "isSystem");
    return sample;
}

std::vector<ProcessSample> readSamples(const Json& list, const Json& pool) {
    std::vector<ProcessSample> samples;
    for (const Json& json : list)
        samples.push_back(readPooled(json, pool));
    return samples;
}

std::vector<SampleRef> readSampleRefs(const Json& list, const Json& pool) {
    std::vector<SampleRef> refs;
    for (ProcessSample& sample : readSamples(list, pool)) {
        refs.push_back(std::make_shared<const ProcessSample>(std::move(sample)));
    }
    return refs;
}

SampleRef readSampleRef(const Json& json, const Json& pool) {
    return std::make_shared<const ProcessSample>(readPooled(json, pool));
}

ApplicationGroup readGroup(const Json& json, const Json& pool) {
    return {readText(json, "id"),
            readText(json, "name"),
            readText(json, "subtitle"),
            readCase(json, "kind",
                     {GroupKind::application, GroupKind::project, GroupKind::system, GroupKind::unassigned}),
            readSampleRefs(at(json, "processes"), pool),
            readShared<ApplicationDescriptor>(json, "application", readApplication),
            readShared<Project>(json, "project", readProject)};
}

std::vector<ApplicationGroup> readGroups(const Json& list, const Json& pool) {
    std::vector<ApplicationGroup> groups;
    for (const Json& json : list)
        groups.push_back(readGroup(json, pool));
    return groups;
}

Service readService(const Json& json, const Json& pool) {
    return {readSampleRef(at(json, "root"), pool), readSampleRefs(at(json, "members"), pool)};
}

std::vector<Service> readServices(const Json& list, const Json& pool) {
    std::vector<Service> services;
    for (const Json& json : list)
        services.push_back(readService(json, pool));
    return services;
}

Finding readFinding(const Json& json) {
    Finding finding{readText(json, "id"),
                    readCase(json, "kind",
                             {FindingKind::highCPU, FindingKind::forgotten, FindingKind::duplicate,
                              FindingKind::restarted}),
                    readText(json, "title"),
                    readText(json, "explanation"),
                    std::nullopt,
                    {},
                    readDate(json, "firstSeen").value_or(Date{})};
    if (!at(json, "groupID").is_null()) finding.groupID = readText(json, "groupID");
    for (const Json& target : at(json, "targets"))
        finding.targets.push_back(readIdentity(target));
    return finding;
}

BatchStopRequest readRequest(const Json& json) {
    const std::string kind = readText(json, "case");
    const ProcessIdentity identity = readIdentity(at(json, "identity"));
    if (kind == "process") return {BatchStopRequest::Process{identity}};
    if (kind != "application") throw std::runtime_error("unknown case " + kind);
    return {BatchStopRequest::Application{readApplication(at(json, "application")), identity}};
}

std::vector<BatchStopRequest> readRequests(const Json& list) {
    std::vector<BatchStopRequest> requests;
    for (const Json& json : list)
        requests.push_back(readRequest(json));
    return requests;
}

namespace {

FanLevel readLevel(const Json& json) {
    if (json.is_null()) return FanLevel::stopped;
    if (json.is_number()) return static_cast<FanLevel>(json.get<int>());
    constexpr std::array<std::string_view, 4> names{"stopped", "running", "vacuum", "takeoff"};
    const auto found = std::ranges::find(names, json.get<std::string>());
    if (found == names.end()) throw std::runtime_error("no fan level: " + json.dump());
    return static_cast<FanLevel>(found - names.begin());
}

} // namespace

FanSnapshot readFans(const Json& json) {
    FanSnapshot fans;
    if (json.is_null()) return fans;
    fans.availability = readCase(json, "availability",
                                 {FanAvailability::unavailable, FanAvailability::available,
                                  FanAvailability::fanless, FanAvailability::stale});
    for (const Json& fan : at(json, "fans")) {
        fans.fans.push_back({readInteger<int>(fan, "id").value_or(0), readNumber(fan, "rpm").value_or(0),
                             readNumber(fan, "maximum")});
    }
    fans.level = readLevel(at(json, "level"));
    fans.spunUp = readFlag(json, "spunUp");
    fans.measuredAt = readDate(json, "measuredAt");
    return fans;
}

MonitorSnapshot readSnapshot(const Json& json, const Json& pool) {
    MonitorSnapshot snapshot;
    snapshot.date = readDate(json, "date").value_or(Date{});
    snapshot.processes = readSampleRefs(at(json, "processes"), pool);
    snapshot.groups = readGroups(at(json, "groups"), pool);
    snapshot.services = readServices(at(json, "services"), pool);
    for (const Json& finding : at(json, "findings"))
        snapshot.findings.push_back(readFinding(finding));
    snapshot.fans = readFans(at(json, "fans"));
    snapshot.thermal =
        readCase(json, "thermal", {Thermal::nominal, Thermal::fair, Thermal::serious, Thermal::critical});
    snapshot.systemCPU = readNumber(json, "systemCPU");
    snapshot.physicalMemory = readInteger<std::uint64_t>(json, "physicalMemory").value_or(0);
    const Json& memory = at(json, "systemMemory");
    snapshot.systemMemory.usedRAM = readInteger<std::uint64_t>(memory, "usedRAM");
    snapshot.systemMemory.compressed = readInteger<std::uint64_t>(memory, "compressed");
    snapshot.systemMemory.swapUsed = readInteger<std::uint64_t>(memory, "swapUsed");
    for (const Json& point : at(json, "history"))
        snapshot.history.push_back(
            {readDate(point, "date").value_or(Date{}), readNumber(point, "value").value_or(0)});
    snapshot.logicalCores = readInteger<int>(json, "logicalCores").value_or(1);
    if (!at(json, "error").is_null()) snapshot.error = readText(json, "error");
    return snapshot;
}

Json written(const ProcessIdentity& identity) {
    return {{"boot", identity.boot}, {"pid", identity.pid}, {"start", identity.start}};
}

Json written(const Attribution& attribution) {
    Json json{{"agent", attribution.agent},
              {"origin", written(attribution.origin)},
              {"confidence", rawValue(attribution.confidence)},
              {"reason", attribution.reason}};
    if (attribution.exitedAt) json["exitedAt"] = attribution.exitedAt->seconds;
    return json;
}

Json written(const Project& project) {
    return {{"root", project.root},
            {"repository", project.repository},
            {"name", project.name},
            {"worktree", project.worktree}};
}

Json written(const ApplicationDescriptor& application) {
    Json json{{"bundlePath", application.bundlePath},
              {"bundleID", application.bundleID},
              {"name", application.name},
              {"pid", application.pid}};
    if (application.processStart) json["processStart"] = *application.processStart;
    return json;
}

Json written(const BatchStopRequest& request) {
    if (const auto* process = std::get_if<BatchStopRequest::Process>(&request.item)) {
        return {{"case", "process"}, {"identity", written(process->identity)}};
    }
    const auto& application = std::get<BatchStopRequest::Application>(request.item);
    return {{"case", "application"},
            {"application", written(application.application)},
            {"identity", written(application.identity)}};
}

Json written(const std::vector<BatchStopRequest>& requests) {
    Json list = Json::array();
    for (const BatchStopRequest& request : requests)
        list.push_back(written(request));
    return list;
}

Json written(const Finding& finding) {
    Json targets = Json::array();
    for (const ProcessIdentity& target : finding.targets)
        targets.push_back(written(target));
    return {{"id", finding.id},
            {"kind", rawValue(finding.kind)},
            {"title", finding.title},
            {"explanation", finding.explanation},
            {"groupID", writtenOrNull(finding.groupID)},
            {"targets", std::move(targets)},
            {"firstSeen", finding.firstSeen.seconds}};
}

} // namespace varnet::vectors
