#include "VarnetCore/Monitoring/GroupBuilder.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>

namespace varnet {
namespace {

/// What a group is keyed by, in the text order of the keys' beginnings.
enum class KeyClass : std::uint8_t { application, process, project };
constexpr std::size_t keyClasses = 3;

constexpr std::string_view prefixOf(KeyClass keyClass) noexcept {
    switch (keyClass) {
    case KeyClass::application:
        return "app:";
    case KeyClass::process:
        return "process:";
    case KeyClass::project:
        return "project:";
    }
    return {};
}

KeyClass keyClassOf(const ProcessSample& sample) noexcept {
    if (sample.project) return KeyClass::project;
    return sample.application ? KeyClass::application : KeyClass::process;
}

/// A group in the making.
struct Bucket {
    const ProcessSample* first;
    KeyClass keyClass;
    std::size_t count = 0;
    double cpu = -1; ///< sum of the averages; stays below every known sum while none is known
    bool cpuKnown = false;
    std::string id{};
    std::uint64_t order = 0; ///< the eight bytes of `id` behind what all ids of its class begin with
};

struct Buckets {
    std::vector<Bucket> all;
    std::vector<std::size_t> ofProcess; ///< by position in the list of processes
};

Buckets fillBuckets(std::span<const SampleRef> processes) {
    Buckets buckets;
    buckets.all.reserve(processes.size());
    buckets.ofProcess.reserve(processes.size());
    std::unordered_map<std::string_view, std::size_t> projects;
    std::unordered_map<std::string_view, std::size_t> applications;
    for (const SampleRef& process : processes) {
        const KeyClass keyClass = keyClassOf(*process);
        std::size_t at = buckets.all.size();
        if (keyClass == KeyClass::project) {
            at = projects.try_emplace(process->project->root, at).first->second;
        } else if (keyClass == KeyClass::application) {
            at = applications.try_emplace(process->application->bundlePath, at).first->second;
        }
        if (at == buckets.all.size()) buckets.all.push_back({.first = process.get(), .keyClass = keyClass});
        buckets.ofProcess.push_back(at);
        Bucket& bucket = buckets.all[at];
        ++bucket.count;
        if (process->averageCPU) {
            bucket.cpu = (bucket.cpuKnown ? bucket.cpu : 0) + *process->averageCPU;
            bucket.cpuKnown = true;
        }
    }
    return buckets;
}

std::string makeId(const Bucket& bucket) {
    std::string id(prefixOf(bucket.keyClass));
    switch (bucket.keyClass) {
    case KeyClass::application:
        return id += bucket.first->application->bundlePath;
    case KeyClass::process:
        return id += bucket.first->id.id();
    case KeyClass::project:
        return id += bucket.first->project->root;
    }
    return id;
}

std::size_t commonLength(std::string_view a, std::string_view b) noexcept {
    return static_cast<std::size_t>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin());
}

std::uint64_t eightBytes(std::string_view text) noexcept {
    std::uint64_t bytes = 0;
    for (std::size_t at = 0; at < 8; ++at) {
        bytes = bytes << 8U | (at < text.size() ? static_cast<unsigned char>(text[at]) : 0U);
    }
    return bytes;
}

/// Most groups of a machine are idle processes with equal CPU, so that their order is that of their ids,
/// which all begin alike ("process:", the boot time). Comparing the first bytes behind that beginning as a
/// number settles nearly every comparison.
void prepareOrder(std::vector<Bucket>& buckets) {
    struct Beginning {
        const std::string* id = nullptr;
        std::size_t length = 0;
    };
    Beginning beginnings[keyClasses];
    for (Bucket& bucket : buckets) {
        bucket.id = makeId(bucket);
        if (std::isnan(bucket.cpu)) bucket.cpu = -1;
        Beginning& beginning = beginnings[static_cast<std::size_t>(bucket.keyClass)];
        if (!beginning.id) beginning = {&bucket.id, bucket.id.size()};
        beginning.length =
            commonLength(std::string_view(*beginning.id).substr(0, beginning.length), bucket.id);
    }
    for (Bucket& bucket : buckets) {
        const Beginning& beginning = beginnings[static_cast<std::size_t>(bucket.keyClass)];
        bucket.order = eightBytes(std::string_view(bucket.id).substr(beginning.length));
    }
}

bool comesBefore(const Bucket& a, const Bucket& b) noexcept {
    if (a.cpu != b.cpu) return a.cpu > b.cpu;
    return std::tie(a.keyClass, a.order, a.id) < std::tie(b.keyClass, b.order, b.id);
}

std::string countText(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " process" : " processes");
}

/// Texts and kind, once the processes are in.
void describe(ApplicationGroup& group, std::uint32_t currentUID) {
    const ProcessSample& first = *group.processes.front();
    if (first.project) {
        group.name = first.project->name;
        group.subtitle = first.project->worktree;
        group.kind = GroupKind::project;
        group.project = first.project;
    } else if (first.application) {
        const std::int32_t mainPid = first.application->pid;
        const auto main =
            std::find_if(group.processes.begin(), group.processes.end(),
                         [mainPid](const SampleRef& process) { return process->id.pid == mainPid; });
        const bool readOnly = main != group.processes.end() && (*main)->isSystem;
        group.name = first.application->name;
        group.subtitle = countText(group.processes.size()) + (readOnly ? " · read only" : "");
        group.kind = readOnly ? GroupKind::system : GroupKind::application;
        group.application = first.application;
    } else {
        const bool system = first.uid != currentUID || first.isSystem;
        group.name = first.name.str();
        group.subtitle = system ? "System process · read only" : "Unassigned process";
        group.kind = system ? GroupKind::system : GroupKind::unassigned;
    }
}

} // namespace

std::vector<ApplicationGroup> makeGroups(std::span<const SampleRef> processes, std::uint32_t currentUID) {
    Buckets buckets = fillBuckets(processes);
    prepareOrder(buckets.all);
    std::vector<Bucket*> ordered;
    ordered.reserve(buckets.all.size());
    for (Bucket& bucket : buckets.all)
        ordered.push_back(&bucket);
    std::sort(ordered.begin(), ordered.end(),
              [](const Bucket* a, const Bucket* b) { return comesBefore(*a, *b); });

    std::vector<ApplicationGroup> groups(ordered.size());
    std::vector<ApplicationGroup*> groupOf(ordered.size()); // by bucket
    for (std::size_t rank = 0; rank < ordered.size(); ++rank) {
        groups[rank].id = std::move(ordered[rank]->id);
        groups[rank].processes.reserve(ordered[rank]->count);
        groupOf[static_cast<std::size_t>(ordered[rank] - buckets.all.data())] = &groups[rank];
    }
    for (std::size_t at = 0; at < processes.size(); ++at) {
        groupOf[buckets.ofProcess[at]]->processes.push_back(processes[at]);
    }
    for (ApplicationGroup& group : groups)
        describe(group, currentUID);
    return groups;
}

} // namespace varnet
