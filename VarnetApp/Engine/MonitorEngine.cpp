#include "VarnetApp/Engine/MonitorEngine.h"

#include "VarnetApp/Engine/AppData.h"
#include "VarnetCore/Base/AtomicFile.h"
#include "VarnetCore/Base/SmallFile.h"
#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Monitoring/Detector.h"
#include "VarnetCore/Sensors/ConfirmedFanless.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <functional>
#include <map>
#include <string_view>
#include <utility>

namespace varnet {

namespace {

constexpr std::size_t archiveLimit = std::size_t{64} << 20U; // far above a week of any machine's lineage

/// Entries of ended processes that are kept. An agent that builds all day starts hundreds of thousands within
/// a week, and the whole archive is written every 30 seconds.
constexpr std::size_t endedLimit = 5'000;

/// Drops the longest gone beyond the limit.
void boundEnded(std::map<ProcessIdentity, SavedLineage>& index,
                const std::unordered_set<ProcessIdentity>& live) {
    std::vector<std::pair<Date, ProcessIdentity>> ended;
    for (const auto& [identity, saved] : index) {
        if (!live.contains(identity)) ended.emplace_back(saved.lastSeen, identity);
    }
    if (ended.size() <= endedLimit) return;
    const auto kept = ended.begin() + endedLimit;
    std::ranges::nth_element(ended, kept, std::greater{});
    for (auto dropped = kept; dropped != ended.end(); ++dropped)
        index.erase(dropped->second);
}

std::uint64_t bootSeconds(Probes& probes, Date now) {
    if (const std::int64_t boot = probes.bootTime(); boot > 0) return static_cast<std::uint64_t>(boot);
    return static_cast<std::uint64_t>(std::max(0.0, now.sinceUnixEpoch() - probes.systemUptime()));
}

SharedTexts splitAtTabs(std::string_view text) {
    if (text.empty()) return {};
    std::vector<std::string> pieces;
    for (;;) {
        const std::size_t tab = text.find('\t');
        pieces.emplace_back(text.substr(0, tab));
        if (tab == std::string_view::npos) return pieces;
        text.remove_prefix(tab + 1);
    }
}

/// Difference of two machine counters. They are taken as 32 bits wide, so that a wrapped counter still gives
/// the right difference; one that has stepped back a little gives zero.
std::uint32_t ticksBetween(std::uint64_t before, std::uint64_t after) noexcept {
    const auto difference = static_cast<std::uint32_t>(after) - static_cast<std::uint32_t>(before);
    return difference < 0x8000'0000U ? difference : 0;
}

} // namespace

MonitorEngine::MonitorEngine(Setup setup)
    : probes_(setup.probes), clock_(setup.clock),
      storage_(setup.storage.empty() ? AppData::root() : std::move(setup.storage)),
      archivePath_(storage_ / "history.json"), batteryReader_(setup.battery),
      resolver_((setup.home.empty() ? AppData::home() : setup.home).string()),
      batteryMonitor_(storage_, clock_.now()) {
    const Date now = clock_.now();
    uid_ = probes_.userID();
    cores_ = probes_.activeProcessorCount();
    boot_ = bootSeconds(probes_, now);
    model_ = probes_.model().value_or("");

    MonitorSnapshot nothingYet;
    nothingYet.date = now;
    nothingYet.logicalCores = 8; // until the first pass
    mostRecent_ = std::make_shared<const MonitorSnapshot>(std::move(nothingYet));

    if (const auto text = readSmallTextFile(archivePath_, archiveLimit)) {
        archive_ = SessionArchive::decode(*text).value_or(SessionArchive{});
    }
    // Entries of an earlier boot name nobody any more; they stay in the archive until they are old.
    for (const SavedLineage& saved : archive_.lineage) {
        if (saved.identity.boot == boot_) assembler_.lineage[saved.identity] = saved.attribution;
    }
}

std::shared_ptr<const MonitorSnapshot>
MonitorEngine::sample(std::span<const ApplicationDescriptor> applications, Thermal thermal,
                      bool isUIVisible) {
    const Date now = clock_.now();
    if (lastSample_ && now - *lastSample_ > Timing::sleepGap) resetAfterSleep();
    const bool metricsDue =
        now - lastMetrics_ >= (isUIVisible ? Timing::visibleMetrics : Timing::hiddenMetrics);
    const bool fansDue = now - lastFan_.measuredAt.value_or(Date::distantPast()) >= Timing::fans;
    if (lastSample_ && now - *lastSample_ < Timing::pass && !metricsDue && !fansDue) return mostRecent_;
    lastSample_ = now;

    const auto table = probes_.table(metricsDue);
    if (!table) return failedPass(now);
    if (metricsDue) lastMetrics_ = now;

    std::unordered_set<ProcessIdentity> wasProject;
    for (const SampleRef& process : mostRecent_->processes) {
        if (process->project) wasProject.insert(process->id);
    }
    ++passes_;
    std::vector<ProcessSample> samples;
    samples.reserve(table->size());
    std::unordered_set<ProcessIdentity> live;
    live.reserve(table->size());
    for (const VNTableEntry& entry : *table) {
        samples.push_back(measure(entry, metricsDue, now, wasProject));
        live.insert(samples.back().id);
    }
    std::erase_if(known_, [this](const auto& item) { return item.second.pass != passes_; });
    energySampler_.retain(live);

    noticeExitedOrigins(live, now);
    auto assembled = assembler_.assemble(std::move(samples), applications, now, uid_);
    auto findings = currentFindings(assembled, now);

    const std::optional<double> systemCPU = measureSystemCPU(now);
    if (fansDue) measureFans(now);
    const std::uint64_t physicalMemory = probes_.physicalMemory();
    if (metricsDue) measureMemory(physicalMemory);

    auto snapshot = std::make_shared<MonitorSnapshot>();
    snapshot->date = now;
    snapshot->processes = std::move(assembled.processes);
    snapshot->groups = std::move(assembled.groups);
    snapshot->services = std::move(assembled.services);
    snapshot->findings = std::move(findings);
    snapshot->fans = lastFan_;
    snapshot->thermal = thermal;
    snapshot->systemCPU = systemCPU;
    snapshot->physicalMemory = physicalMemory;
    snapshot->systemMemory = lastMemory_;
    snapshot->history = cpuHistory_;
    snapshot->logicalCores = cores_;
    snapshot->battery = metricsDue ? measureBattery(snapshot->groups, now) : mostRecent_->battery;
    mostRecent_ = snapshot;

    if (now - lastArchiveWrite_ > Timing::archive) archiveStep(snapshot->processes, live, now);
    return snapshot;
}

ProcessSample MonitorEngine::measure(const VNTableEntry& entry, bool metricsDue, Date now,
                                     const std::unordered_set<ProcessIdentity>& wasProject) {
    const ProcessIdentity id{boot_, entry.pid, entry.start};
    const auto [position, isNew] = known_.try_emplace(id);
    Known& known = position->second;
    known.pass = passes_;
    Metadata& metadata = known.metadata;
    if (metricsDue) measureUsage(entry, id, known, now);

    std::string_view name = entry.name;
    std::string repairedName;
    if (!isValidUtf8(name)) name = repairedName = repairedUtf8(name);
    std::string readPath;
    std::string_view executable = metadata.executable;
    if (metricsDue) {
        executable = entry.path;
    } else if (isNew) {
        executable = readPath = probes_.path(entry.pid).value_or("");
    }
    if (isNew || metadata.executable != executable || metadata.name != name) {
        // It runs another image now: nothing that was read before is about it.
        SharedText keptName = metadata.name == name ? metadata.name : SharedText(name);
        SharedText keptExecutable =
            metadata.executable == executable ? metadata.executable : SharedText(executable);
        metadata = {};
        metadata.name = std::move(keptName);
        metadata.executable = std::move(keptExecutable);
    }
    const bool own = entry.uid == uid_;
    if (own) refreshMetadata(entry.pid, metadata, wasProject.contains(id), now);

    ProcessSample sample;
    sample.id = id;
    sample.parentPID = entry.parent;
    sample.uid = entry.uid;
    sample.name = metadata.name;
    sample.executable = metadata.executable;
    sample.arguments = metadata.arguments;
    sample.cwd = metadata.cwd;
    sample.cpu = known.cachedMetrics.cpu;
    sample.averageCPU = known.cachedMetrics.average;
    sample.memory = known.cachedMetrics.memory;
    sample.energyImpact = known.cachedEnergy.average;
    sample.instantaneousEnergyImpact = known.cachedEnergy.current;
    sample.ports = metadata.ports;
    sample.portsAvailable = metadata.portsAvailable;
    if (own && metadata.development && metadata.cwd) sample.project = resolver_.resolve(*metadata.cwd, now);
    sample.isSystem = isSystem(entry, executable);
    return sample;
}

void MonitorEngine::measureUsage(const VNTableEntry& entry, const ProcessIdentity& id, Known& known,
                                 Date now) {
    known.cachedMetrics = {};
    if (entry.hasUsage == 0) {
        known.cachedEnergy = {};
        return;
    }
    known.cachedEnergy = energySampler_.sample(id, entry.cpu, entry.wakeups, now);

    Counters counters = known.counters ? std::move(*known.counters) : Counters{entry.cpu, now, {}};
    Metrics& metrics = known.cachedMetrics;
    if (const double elapsed = now - counters.date; entry.cpu >= counters.cpu && elapsed > 0) {
        const double used = static_cast<double>(entry.cpu - counters.cpu) / 1e9 / elapsed * 100;
        metrics.cpu = std::min(used, cores_ * 100.0);
        metrics.average = counters.history.record(*metrics.cpu, elapsed, now);
    }
    if (!metrics.average) metrics.average = counters.history.average(now);
    counters.cpu = entry.cpu;
    counters.date = now;
    known.counters = std::move(counters);
    metrics.memory = entry.memory;
}

void MonitorEngine::refreshMetadata(std::int32_t pid, Metadata& metadata, bool wasProject, Date now) {
    if (now - metadata.updated >= Timing::metadata) {
        if (metadata.arguments.empty()) {
            const auto text = probes_.arguments(pid);
            SharedTexts arguments = text ? splitAtTabs(*text) : SharedTexts();
            if (!(arguments == metadata.arguments)) {
                metadata.arguments = std::move(arguments);
                metadata.classified = false;
            }
        }
        if (!metadata.classified) {
            metadata.development =
                Detector::isDevelopment(metadata.executable, metadata.name, metadata.arguments);
            metadata.classified = true;
        }
        if (metadata.development) {
            auto cwd = probes_.cwd(pid);
            if (!cwd) {
                metadata.cwd.reset();
            } else if (!metadata.cwd || !(*metadata.cwd == std::string_view(*cwd))) {
                metadata.cwd = SharedText(std::move(*cwd));
            }
        }
        metadata.updated = now;
    }
    if ((metadata.development || wasProject) && now - metadata.portDate >= Timing::ports) {
        const auto ports = probes_.ports(pid);
        metadata.portsAvailable = ports.has_value();
        metadata.ports.clear();
        if (ports) metadata.ports.assign(ports->begin(), ports->end());
        metadata.portDate = now;
    }
}

bool MonitorEngine::isSystem(const VNTableEntry& entry, std::string_view executable) const noexcept {
    if ((entry.flags & VN_FLAG_SYSTEM) != 0 || entry.uid != uid_) return true;
    constexpr std::array<std::string_view, 3> systemFolders{"/System/Library/", "/usr/libexec/",
                                                            "/usr/sbin/"};
    return std::ranges::any_of(
        systemFolders, [executable](std::string_view folder) { return executable.starts_with(folder); });
}

void MonitorEngine::noticeExitedOrigins(const std::unordered_set<ProcessIdentity>& live, Date now) {
    for (auto& [key, attribution] : assembler_.lineage) {
        if (!live.contains(key) || live.contains(attribution.origin) || attribution.exitedAt) continue;
        if (hasExited(attribution.origin)) attribution.exitedAt = now;
    }
}

/// The table may have missed a process; only the process itself tells for sure.
bool MonitorEngine::hasExited(const ProcessIdentity& origin) {
    if (const auto identity = probes_.identity(origin.pid)) return identity->start != origin.start;
    return probes_.exists(origin.pid) == ESRCH;
}

std::optional<double> MonitorEngine::measureSystemCPU(Date now) {
    std::optional<double> systemCPU;
    if (const auto ticks = probes_.cpuTicks()) {
        if (cpuTicks_) {
            const double busy = static_cast<double>(ticksBetween(cpuTicks_->user, ticks->user)) +
                                ticksBetween(cpuTicks_->system, ticks->system) +
                                ticksBetween(cpuTicks_->nice, ticks->nice);
            const double total = busy + ticksBetween(cpuTicks_->idle, ticks->idle);
            if (total > 0) {
                systemCPU = std::min(busy / total * 100, 100.0);
                cpuHistory_.push_back({now, *systemCPU});
            }
        }
        cpuTicks_ = ticks;
    }
    std::erase_if(cpuHistory_, [now](const CPUPoint& point) { return now - point.date > Timing::history; });
    return systemCPU;
}

/// What the user has set aside is still evaluated, so that taking it back shows it at once with its true age.
std::vector<Finding> MonitorEngine::currentFindings(const SnapshotAssembler::Result& assembled, Date now) {
    auto findings = findings_.evaluate(assembled.groups, assembled.services, assembled.processes, now);
    std::erase_if(findings, [this](const Finding& finding) { return archive_.ignored.contains(finding.id); });
    return findings;
}

void MonitorEngine::measureFans(Date now) {
    std::vector<Fan> fans;
    if (const auto records = probes_.fans()) {
        for (const VNFan& record : *records) {
            const auto maximum = record.maximum > 0 ? std::optional(record.maximum) : std::nullopt;
            fans.push_back({.id = record.id, .rpm = record.rpm, .maximum = maximum});
        }
    }
    FanAvailability availability = FanAvailability::available;
    if (fans.empty()) {
        const bool worked = lastFan_.availability == FanAvailability::available ||
                            lastFan_.availability == FanAvailability::stale;
        availability = isConfirmedFanless(model_) ? FanAvailability::fanless
                       : worked                   ? FanAvailability::stale
                                                  : FanAvailability::unavailable;
    }
    lastFan_ = fanMachine_.update(std::move(fans), availability, now);
    lastFan_.measuredAt = now; // counts the time to the next probe, also after one that failed
}

std::shared_ptr<const BatteryDashboard>
MonitorEngine::measureBattery(std::span<const ApplicationGroup> groups, Date now) {
    BatteryReading& reading = batteryMonitor_.reading;
    if (now - reading.date >= Timing::battery || reading.date > now) {
        reading = batteryReader_ != nullptr ? batteryReader_->read(now)
                                            : BatteryReading::missing(BatteryAvailability::unavailable, now);
    }
    auto dashboard =
        std::make_shared<BatteryDashboard>(batteryMonitor_.tracker.observe(reading, groups, now));
    if (now - batteryMonitor_.lastSave >= Timing::batterySave) {
        batteryMonitor_.save();
        batteryMonitor_.lastSave = now;
    }
    dashboard->warning = batteryMonitor_.warning;
    return dashboard;
}

void MonitorEngine::measureMemory(std::uint64_t physicalMemory) {
    const VNSystemMemory memory = probes_.systemMemory();
    lastMemory_ = {};
    if (memory.hasUsed != 0 && memory.used <= physicalMemory) lastMemory_.usedRAM = memory.used;
    if (memory.hasCompressed != 0) lastMemory_.compressed = memory.compressed;
    if (memory.hasSwap != 0) lastMemory_.swapUsed = memory.swapUsed;
}

/// The last good picture stays, marked as what it is; the next good pass replaces it.
std::shared_ptr<const MonitorSnapshot> MonitorEngine::failedPass(Date now) {
    energySampler_.reset();
    for (auto& [id, known] : known_)
        known.cachedEnergy = {};
    auto snapshot = std::make_shared<MonitorSnapshot>(*mostRecent_);
    if (snapshot->fans.availability == FanAvailability::available) {
        snapshot->fans.availability = FanAvailability::stale;
    }
    snapshot->systemMemory = {};
    snapshot->error = "Process measurements are unavailable. Last successful update is shown.";
    snapshot->battery = measureBattery({}, now);
    snapshot->date = now;
    return snapshot;
}

void MonitorEngine::archiveStep(std::span<const SampleRef> processes,
                                const std::unordered_set<ProcessIdentity>& live, Date now) {
    std::map<ProcessIdentity, SavedLineage> index;
    for (SavedLineage& saved : archive_.lineage) {
        const ProcessIdentity identity = saved.identity;
        index.insert_or_assign(identity, std::move(saved));
    }
    for (const SampleRef& process : processes) {
        if (process->attribution) {
            index.insert_or_assign(process->id, SavedLineage{process->id, *process->attribution, now});
        }
    }
    boundEnded(index, live);
    std::erase_if(assembler_.lineage, [&](const auto& item) {
        if (live.contains(item.first)) return false;
        const auto saved = index.find(item.first);
        return saved == index.end() || now - saved->second.lastSeen >= SessionArchive::retention;
    });
    archive_.lineage.clear();
    for (auto& [identity, saved] : index)
        archive_.lineage.push_back(std::move(saved));
    archive_.prune(now, live);
    saveArchive();
    lastArchiveWrite_ = now;
}

void MonitorEngine::saveArchive() {
    auto failure = AtomicFile::makePrivateFolder(storage_);
    if (!failure) failure = AtomicFile::write(archivePath_, archive_.encode());
    if (failure) {
        persistenceError_ = "History could not be saved. Live monitoring continues. " + *failure;
    } else {
        persistenceError_.reset();
    }
}

void MonitorEngine::resetAfterSleep() {
    batteryMonitor_.tracker.interrupt();
    batteryMonitor_.reading.date = Date::distantPast();
    batteryMonitor_.save();
    energySampler_.reset();
    known_.clear();
    lastMetrics_ = Date::distantPast();
    cpuTicks_.reset();
    fanMachine_.reset();
    findings_.reset();
    lastFan_.measuredAt.reset();
    lastMemory_ = {};
    lastSample_.reset();
}

void MonitorEngine::clearHistory() {
    archive_ = {};
    assembler_.lineage.clear();
    findings_.reset();
    batteryMonitor_.tracker = BatteryTracker();
    batteryMonitor_.canSave = true;
    batteryMonitor_.reading.date = Date::distantPast();
    batteryMonitor_.save();
    saveArchive();
}

void MonitorEngine::ignore(const std::string& findingID) {
    archive_.ignored[findingID] = clock_.now();
    saveArchive();
}

void MonitorEngine::unignore(const std::string& findingID) {
    archive_.ignored.erase(findingID);
    saveArchive();
}

void MonitorEngine::addAction(HistoryRecord action) {
    archive_.actions.insert(archive_.actions.begin(), std::move(action));
    saveArchive();
}

void MonitorEngine::setRoastChoices(std::map<std::string, std::int64_t> choices) {
    if (choices == archive_.roastChoices) return;
    archive_.roastChoices = std::move(choices);
    saveArchive();
}

void MonitorEngine::execute(StopPlan plan, StopForce force, SerialQueue& queue,
                            const StopCompletion& completion) {
    auto execution = std::make_shared<StopExecution>(std::move(plan), force, boot_);
    execution->signal(probes_);
    execution->startWaiting(clock_.now());
    watch(execution, queue, completion);
}

void MonitorEngine::watch(const std::shared_ptr<StopExecution>& execution, SerialQueue& queue,
                          const StopCompletion& completion) {
    const Date now = clock_.now();
    if (execution->look(probes_, now)) {
        addAction(execution->record(now));
        completion(execution->results());
        return;
    }
    queue.postAfter(StopExecution::pause,
                    [this, alive = std::weak_ptr(alive_), execution, &queue, completion] {
                        if (!alive.expired()) watch(execution, queue, completion);
                    });
}

} // namespace varnet
