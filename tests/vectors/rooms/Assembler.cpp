#include "VarnetCore/Monitoring/SnapshotAssembler.h"
#include "tests/vectors/Operations.h"

#include <map>

namespace varnet::vectors {
namespace {

Json ids(const std::vector<SampleRef>& samples) {
    return mapped(samples, [](const SampleRef& sample) { return sample->id.id(); });
}

Json process(const SampleRef& process) {
    return {{"id", process->id.id()},
            {"attribution", written(process->attribution)},
            {"project", written(process->project)},
            {"application", written(process->application)}};
}

Json group(const ApplicationGroup& group) {
    Json json = written(group);
    json["processes"] = ids(group.processes);
    return json;
}

Json service(const Service& service) {
    return {{"root", service.id()},
            {"members", ids(service.members)},
            {"name", service.name()},
            {"ports", service.ports()}};
}

Json lineage(const std::pair<const ProcessIdentity, Attribution>& entry) {
    return {{"identity", written(entry.first)}, {"attribution", written(entry.second)}};
}

Json assemble(const Json& input) {
    SnapshotAssembler assembler;
    return mapped(at(input, "steps"), [&](const Json& step) -> Json {
        const Json& edits = at(step, "lineageEdits");
        for (const Json& entry : at(edits, "set"))
            assembler.lineage[read<ProcessIdentity>(entry, "identity")] =
                read<Attribution>(entry, "attribution");
        for (const auto& identity : read<std::vector<ProcessIdentity>>(edits, "remove"))
            assembler.lineage.erase(identity);
        const auto result =
            assembler.assemble(read<std::vector<ProcessSample>>(step, "samples"),
                               read<std::vector<ApplicationDescriptor>>(step, "applications"),
                               readDate(step, "now"), read<std::uint32_t>(step, "currentUID"));
        const std::map<ProcessIdentity, Attribution> sorted(assembler.lineage.begin(),
                                                            assembler.lineage.end());
        return {{"processes", mapped(result.processes, process)},
                {"groups", mapped(result.groups, group)},
                {"services", mapped(result.services, service)},
                {"lineage", mapped(sorted, lineage)}};
    });
}

const Room room{{"SnapshotAssembler.assemble", answering(assemble)}};

} // namespace
} // namespace varnet::vectors
