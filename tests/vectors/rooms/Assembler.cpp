#include "VarnetCore/Monitoring/SnapshotAssembler.h"
#include "tests/vectors/Operations.h"
#include "tests/vectors/RecordJson.h"

#include <map>

namespace varnet::vectors {
namespace {

void applyEdits(SnapshotAssembler& assembler, const Json& edits) {
    for (const Json& entry : at(edits, "set")) {
        assembler.lineage[readIdentity(at(entry, "identity"))] = readAttribution(at(entry, "attribution"));
    }
    for (const Json& identity : at(edits, "remove"))
        assembler.lineage.erase(readIdentity(identity));
}

Json ids(const std::vector<SampleRef>& samples) {
    Json list = Json::array();
    for (const SampleRef& sample : samples)
        list.push_back(sample->id.id());
    return list;
}

Json written(const SnapshotAssembler::Result& result) {
    Json processes = Json::array();
    for (const SampleRef& process : result.processes) {
        processes.push_back({{"id", process->id.id()},
                             {"attribution", writtenOrNull(process->attribution)},
                             {"project", writtenOrNull(process->project)},
                             {"application", writtenOrNull(process->application)}});
    }
    Json groups = Json::array();
    for (const ApplicationGroup& group : result.groups) {
        groups.push_back({{"id", group.id},
                          {"name", group.name},
                          {"subtitle", group.subtitle},
                          {"kind", rawValue(group.kind)},
                          {"processes", ids(group.processes)},
                          {"application", writtenOrNull(group.application)},
                          {"project", writtenOrNull(group.project)}});
    }
    Json services = Json::array();
    for (const Service& service : result.services) {
        services.push_back({{"root", service.id()},
                            {"members", ids(service.members)},
                            {"name", service.name()},
                            {"ports", service.ports()}});
    }
    return {{"processes", std::move(processes)},
            {"groups", std::move(groups)},
            {"services", std::move(services)}};
}

Json lineageOf(const SnapshotAssembler& assembler) {
    const std::map<ProcessIdentity, Attribution> sorted(assembler.lineage.begin(), assembler.lineage.end());
    Json list = Json::array();
    for (const auto& [identity, attribution] : sorted) {
        list.push_back(
            {{"identity", vectors::written(identity)}, {"attribution", vectors::written(attribution)}});
    }
    return list;
}

Json assemble(const Json& input) {
    SnapshotAssembler assembler;
    Json results = Json::array();
    for (const Json& step : at(input, "steps")) {
        applyEdits(assembler, at(step, "lineageEdits"));
        std::vector<ApplicationDescriptor> applications;
        for (const Json& application : at(step, "applications")) {
            applications.push_back(readApplication(application));
        }
        Json result = written(assembler.assemble(readSamples(at(step, "samples"), at(input, "pool")),
                                                 applications, readDate(step, "now").value_or(Date{}),
                                                 readInteger<std::uint32_t>(step, "currentUID").value_or(0)));
        result["lineage"] = lineageOf(assembler);
        results.push_back(std::move(result));
    }
    return results;
}

const Room room{{"SnapshotAssembler.assemble", answering(assemble)}};

} // namespace
} // namespace varnet::vectors
