#include "VarnetCore/Monitoring/SnapshotAssembler.h"

#include "VarnetCore/Monitoring/Detector.h"
#include "VarnetCore/Monitoring/GroupBuilder.h"
#include "VarnetCore/Monitoring/ProcessChains.h"
#include "VarnetCore/Monitoring/RunningApplications.h"
#include "VarnetCore/Monitoring/ServiceBuilder.h"

#include <algorithm>

namespace varnet {
namespace {

constexpr std::string_view recognizedReason =
    "Recognized the running agent executable or application identity.";

std::string observedReason(std::string_view agent) {
    return "Observed a live parent-child chain to " + std::string(agent) + '.';
}

std::string_view pathOf(const ProcessSample& sample) noexcept {
    return sample.cwd ? std::string_view(*sample.cwd) : std::string_view();
}

} // namespace

/// One call of assemble: the samples being completed, and lists parallel to them.
class SnapshotAssembler::Pass {
public:
    Pass(SnapshotAssembler& assembler, std::vector<ProcessSample>& samples,
         std::span<const ApplicationDescriptor> applications, std::uint32_t currentUID)
        : assembler_(assembler), samples_(samples), currentUID_(currentUID), chains_(samples),
          applications_(applications, samples, chains_) {}

    void complete() {
        detect();
        findCredits();
        for (Position at = 0; at < count(); ++at) {
            ProcessSample& sample = sampleAt(at);
            sample.application = applicationOf(at);
            credit(at);
            if (sample.project && !keepsOwnProject(at)) sample.project.reset();
        }
        inheritProjects();
    }

    const ProcessChains& chains() const noexcept { return chains_; }
    /// By position: whether the process counts as development work.
    std::vector<bool> development() const {
        std::vector<bool> all(samples_.size());
        for (Position at = 0; at < count(); ++at)
            all[index(at)] = verdict(at).development;
        return all;
    }

private:
    using Position = std::int32_t;

    /// A detection without what a later sample of the pass could change in the cache.
    struct Verdict {
        bool development;
        std::string_view agent;
        std::string_view applicationPath;
        Detection* cached;
    };
    enum class PluginFolder : std::uint8_t { unasked, no, yes };

    static std::size_t index(Position at) noexcept { return static_cast<std::size_t>(at); }
    Position count() const noexcept { return static_cast<Position>(samples_.size()); }
    ProcessSample& sampleAt(Position at) noexcept { return samples_[index(at)]; }
    const Verdict& verdict(Position at) const noexcept { return verdicts_[index(at)]; }

    void detect() {
        verdicts_.reserve(samples_.size());
        for (Position at = 0; at < count(); ++at) {
            const ProcessSample& sample = sampleAt(at);
            const auto& application = mainApplicationOf(at);
            const bool isMain = application && application->pid == sample.id.pid;
            Detection& found = assembler_.detect(sample, isMain ? std::string_view(application->bundleID)
                                                                : std::string_view());
            const std::string_view executable = sample.executable;
            verdicts_.push_back(
                {found.development, found.agent, executable.substr(0, found.applicationPathSize), &found});
        }
    }

    /// The lineage is small and the table is large: place its entries once instead of looking up every
    /// ancestor of every process.
    void findCredits() {
        credits_.assign(samples_.size(), nullptr);
        for (auto& [identity, attribution] : assembler_.lineage) {
            const Position at = chains_.find(identity);
            if (at == ProcessChains::none) continue;
            credits_[index(at)] = &attribution;
            anyCredit_ = true;
        }
        anyCredit_ = anyCredit_ || std::any_of(verdicts_.begin(), verdicts_.end(),
                                               [](const Verdict& found) { return !found.agent.empty(); });
    }

    /// By pid, so that a pid named twice has one answer.
    const RunningApplications::Ref& mainApplicationOf(Position at) const noexcept {
        return applications_.ofMainProcess(chains_.find(samples_[index(at)].id.pid));
    }

    std::shared_ptr<const ApplicationDescriptor> applicationOf(Position at) const {
        if (applications_.none()) return nullptr;
        if (const auto& own = mainApplicationOf(at)) return own;
        if (const std::string_view path = verdict(at).applicationPath; !path.empty()) {
            if (const auto& bundled = applications_.atPath(path)) return bundled;
        }
        std::shared_ptr<const ApplicationDescriptor> inherited;
        chains_.visitAncestors(at, [&](Position ancestor) {
            inherited = applications_.ofMainProcess(ancestor);
            return inherited != nullptr;
        });
        return inherited;
    }

    /// Finds whom a process is credited to, writes it into the lineage and hands it to the sample.
    void credit(Position at) {
        ProcessSample& sample = sampleAt(at);
        sample.attribution.reset();
        if (!anyCredit_) return;
        Attribution*& entry = credits_[index(at)];
        if (const std::string_view agent = verdict(at).agent; !agent.empty()) {
            if (!entry) entry = &assembler_.lineage[sample.id];
            if (entry->agent != agent || entry->origin != sample.id || entry->reason != recognizedReason ||
                entry->confidence != Confidence::observed) {
                *entry = {
                    std::string(agent), sample.id, Confidence::observed, std::string(recognizedReason), {}};
            }
        } else if (!entry) {
            entry = creditFromAncestors(at);
        }
        if (!entry) return;
        if (chains_.contains(entry->origin)) entry->exitedAt.reset();
        std::shared_ptr<const Attribution>& shared = verdict(at).cached->attribution;
        if (!shared || *shared != *entry) shared = std::make_shared<const Attribution>(*entry);
        sample.attribution = shared;
    }

    Attribution* creditFromAncestors(Position at) {
        Attribution* inherited = nullptr;
        chains_.visitAncestors(at, [&](Position ancestor) {
            const std::string_view agent = verdict(ancestor).agent;
            if (!agent.empty()) {
                Attribution observed{std::string(agent),
                                     sampleAt(ancestor).id,
                                     Confidence::observed,
                                     observedReason(agent),
                                     {}};
                inherited =
                    &assembler_.lineage.insert_or_assign(sampleAt(at).id, std::move(observed)).first->second;
            } else if (const Attribution* entry = credits_[index(ancestor)]) {
                // A copy, its end included: a server's new child was not started by a living agent either.
                inherited =
                    &assembler_.lineage.insert_or_assign(sampleAt(at).id, Attribution(*entry)).first->second;
            }
            return inherited != nullptr;
        });
        return inherited;
    }

    bool keepsOwnProject(Position at) {
        return verdict(at).development && sampleAt(at).uid == currentUID_ && !inPluginFolder(at);
    }

    bool inPluginFolder(Position at) {
        PluginFolder& known = pluginFolders_[index(at)];
        if (known == PluginFolder::unasked) {
            known = Detector::isInstalledPluginDirectory(pathOf(sampleAt(at))) ? PluginFolder::yes
                                                                               : PluginFolder::no;
        }
        return known == PluginFolder::yes;
    }

    /// After every process has its own project. Whatever one inherits, later ones may inherit from it.
    void inheritProjects() {
        if (std::none_of(samples_.begin(), samples_.end(),
                         [](const ProcessSample& sample) { return sample.project != nullptr; })) {
            return;
        }
        for (Position at = 0; at < count(); ++at) {
            ProcessSample& sample = sampleAt(at);
            if (sample.project || sample.uid != currentUID_ || sample.isSystem) continue;
            // An application's helper is no project work by ancestry.
            if (!verdict(at).development && !verdict(at).applicationPath.empty()) continue;
            if (inPluginFolder(at)) continue;
            chains_.visitAncestors(at, [&](Position ancestor) {
                if (inPluginFolder(ancestor)) return true;
                sample.project = sampleAt(ancestor).project;
                return sample.project != nullptr;
            });
        }
    }

    SnapshotAssembler& assembler_;
    std::vector<ProcessSample>& samples_;
    const std::uint32_t currentUID_;
    const ProcessChains chains_;
    const RunningApplications applications_;

    // Parallel to the samples.
    std::vector<Verdict> verdicts_;
    std::vector<Attribution*> credits_; ///< into the lineage, whose nodes stay put; null: no entry
    std::vector<PluginFolder> pluginFolders_ = std::vector(samples_.size(), PluginFolder::unasked);

    bool anyCredit_ = false; ///< some process of the pass is an agent or has an entry
};

SnapshotAssembler::Detection& SnapshotAssembler::detect(const ProcessSample& sample,
                                                        std::string_view bundle) {
    const auto [entry, isNew] = detections_.try_emplace(sample.id);
    Detection& known = entry->second;
    if (isNew || known.executable != sample.executable || known.name != sample.name ||
        known.arguments != sample.arguments || known.bundle != bundle) {
        const std::string_view executable = sample.executable;
        const auto applicationPath = Detector::applicationPath(executable);
        known.executable = sample.executable;
        known.name = sample.name;
        known.arguments = sample.arguments;
        known.bundle = bundle;
        known.development = Detector::isDevelopment(executable, sample.name, sample.arguments);
        known.agent = Detector::agentName(sample.name, executable, sample.arguments, bundle);
        known.applicationPathSize = applicationPath ? applicationPath->size() : 0;
    }
    if (known.pass != pass_) {
        known.pass = pass_;
        ++seen_;
    }
    return known;
}

void SnapshotAssembler::forgetUnseen() {
    if (seen_ == detections_.size()) return;
    std::erase_if(detections_, [this](const auto& entry) { return entry.second.pass != pass_; });
}

SnapshotAssembler::Result SnapshotAssembler::assemble(std::vector<ProcessSample> samples,
                                                      std::span<const ApplicationDescriptor> applications,
                                                      Date /*now*/, std::uint32_t currentUID) {
    ++pass_;
    seen_ = 0;
    // All samples in one allocation, which every reference to one of them keeps alive.
    const auto table = std::make_shared<std::vector<ProcessSample>>(std::move(samples));
    Pass pass(*this, *table, applications, currentUID);
    pass.complete();
    forgetUnseen();

    Result result;
    result.processes.reserve(table->size());
    for (const ProcessSample& sample : *table)
        result.processes.emplace_back(table, &sample);
    result.groups = makeGroups(result.processes, currentUID);
    result.services = makeServices(result.processes, pass.chains(), pass.development(), currentUID);
    return result;
}

} // namespace varnet
