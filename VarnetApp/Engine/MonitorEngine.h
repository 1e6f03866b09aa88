#pragma once

#include "VarnetApp/Engine/StopExecution.h"
#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Base/SerialQueue.h"
#include "VarnetCore/Battery/BatteryMonitoring.h"
#include "VarnetCore/Battery/BatteryReader.h"
#include "VarnetCore/Battery/EnergyImpactSampler.h"
#include "VarnetCore/Findings/FindingEngine.h"
#include "VarnetCore/Monitoring/CPUWindow.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"
#include "VarnetCore/Monitoring/ProjectResolver.h"
#include "VarnetCore/Monitoring/SessionArchive.h"
#include "VarnetCore/Monitoring/SnapshotAssembler.h"
#include "VarnetCore/Sensors/FanStateMachine.h"
#include "probes/Probes.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace varnet {

/// Measures the machine. Owns everything that changes from one measurement to the next and decides by its own
/// timers how much of a pass a call does, so a caller may call as often as it likes; once a second is meant.
/// Plain synchronous code for one thread or serial queue at a time; it never throws for what the machine or
/// the disk does.
class MonitorEngine {
public:
    /// Seconds.
    struct Timing {
        static constexpr double sleepGap = 15;      ///< a longer silence counts as sleep
        static constexpr double pass = 2;           ///< least time between passes
        static constexpr double visibleMetrics = 2; ///< CPU, memory, energy and paths, somebody looking
        static constexpr double hiddenMetrics = 5;  ///< the same, nobody looking
        static constexpr double fans = 5;
        static constexpr double metadata = 10; ///< a process's arguments and working directory
        static constexpr double ports = 10;    ///< a process's ports
        static constexpr double history = 900; ///< machine CPU history kept
        static constexpr double archive = 30;  ///< between two saves
        static constexpr double battery = 5;   ///< between two readings
        static constexpr double batterySave = 30;
    };

    struct Setup {
        Probes& probes;                   ///< outlives the engine
        const Clock& clock;               ///< outlives the engine
        std::filesystem::path storage;    ///< folder of the files it keeps; empty: the data root
        std::filesystem::path home;       ///< the user's home folder; empty: found by itself
        BatteryReader* battery = nullptr; ///< outlives the engine; null: the battery cannot be read
    };

    /// Reads the archive; a missing or unreadable one is an empty one.
    explicit MonitorEngine(Setup setup);

    /// One call of the main loop: measures what is due. Between passes the snapshot before comes back as it
    /// was.
    /// @param applications running applications, as the catalogue lists them
    /// @param isUIVisible some window or the panel shows live data
    /// @return never null
    std::shared_ptr<const MonitorSnapshot> sample(std::span<const ApplicationDescriptor> applications,
                                                  Thermal thermal, bool isUIVisible);

    /// Forgets all measured state, so that an interval of sleep counts neither as work nor as activity. Who
    /// started what is kept.
    void resetAfterSleep();

    /// Forgets the archive, who started what and the battery's history, and saves that.
    void clearHistory();

    /// Receives one result per target of a plan, in the plan's order.
    using StopCompletion = std::function<void(std::vector<StopResult>)>;

    /// Carries out a reviewed plan: signals at once, then watches until every process is seen to be gone or
    /// time is up, writes one history record, saves, and tells. Passes go on while it waits. An end of the
    /// engine cuts the watching short: nothing is written and nobody told.
    /// @param queue the one this engine lives on
    void execute(StopPlan plan, StopForce force, SerialQueue& queue, const StopCompletion& completion);

    /// Sets a finding aside, or takes it back, and saves.
    void ignore(const std::string& findingID);
    void unignore(const std::string& findingID);
    /// Puts an action of the user at the front of the history, and saves.
    void addAction(HistoryRecord action);
    /// Keeps the state of the flame's decks of lines, and saves when it differs.
    void setRoastChoices(std::map<std::string, std::int64_t> choices);

    /// Forgets which folders belong to which project: one of them can be read from now on.
    void invalidateProjects() noexcept { resolver_.invalidate(); }

    const SessionArchive& archive() const noexcept { return archive_; }
    /// Boot time in every identity of this run.
    std::uint64_t boot() const noexcept { return boot_; }

    /// Takes over another battery history, keeping a copy of the file before it.
    /// @return empty on success, else what went wrong
    std::optional<std::string> restoreBattery(BatteryArchive archive) {
        return batteryMonitor_.restore(std::move(archive), clock_.now());
    }
    /// Trouble with keeping the battery's history, a sentence for the user; empty: none.
    const std::optional<std::string>& batteryWarning() const noexcept { return batteryMonitor_.warning; }

    /// Why the last save failed, a sentence for the user; empty when it succeeded.
    const std::optional<std::string>& persistenceError() const noexcept { return persistenceError_; }

private:
    struct Counters {
        std::uint64_t cpu = 0; ///< nanoseconds
        Date date;
        CPUWindow history;
    };
    struct Metrics {
        std::optional<double> cpu;
        std::optional<double> average;
        std::optional<std::uint64_t> memory;
    };
    /// The slow-moving facts about one process.
    struct Metadata {
        SharedText executable;
        SharedTexts arguments;
        std::optional<SharedText> cwd;
        Date updated = Date::distantPast(); ///< arguments and working directory
        std::vector<int> ports;
        bool portsAvailable = false;
        Date portDate = Date::distantPast();
        bool development = false;
        SharedText name;
        bool classified = false; ///< `development` is worked out for the present strings
    };
    /// All that is remembered of one process between passes.
    struct Known {
        std::optional<Counters> counters;
        Metadata metadata;
        Metrics cachedMetrics;
        EnergyImpact cachedEnergy;
        std::uint64_t pass = 0; ///< the last one that saw it
    };

    ProcessSample measure(const VNTableEntry& entry, bool metricsDue, Date now,
                          const std::unordered_set<ProcessIdentity>& wasProject);
    void measureUsage(const VNTableEntry& entry, const ProcessIdentity& id, Known& known, Date now);
    void refreshMetadata(std::int32_t pid, Metadata& metadata, bool wasProject, Date now);
    bool isSystem(const VNTableEntry& entry, std::string_view executable) const noexcept;
    void noticeExitedOrigins(const std::unordered_set<ProcessIdentity>& live, Date now);
    bool hasExited(const ProcessIdentity& origin);
    std::optional<double> measureSystemCPU(Date now);
    void measureFans(Date now);
    std::shared_ptr<const BatteryDashboard> measureBattery(std::span<const ApplicationGroup> groups,
                                                           Date now);
    void measureMemory(std::uint64_t physicalMemory);
    std::shared_ptr<const MonitorSnapshot> failedPass(Date now);
    void archiveStep(std::span<const SampleRef> processes, const std::unordered_set<ProcessIdentity>& live,
                     Date now);
    void saveArchive();
    std::vector<Finding> currentFindings(const SnapshotAssembler::Result& assembled, Date now);
    void watch(const std::shared_ptr<StopExecution>& execution, SerialQueue& queue,
               const StopCompletion& completion);

    // Constant after construction.
    Probes& probes_;
    const Clock& clock_;
    std::filesystem::path storage_;
    std::filesystem::path archivePath_;
    std::uint64_t boot_ = 0; ///< seconds since 1970
    std::uint32_t uid_ = 0;
    int cores_ = 1;
    std::string model_; ///< empty when unknown
    BatteryReader* batteryReader_ = nullptr;

    // What each pass leaves for the next.
    std::unordered_map<ProcessIdentity, Known> known_;
    SnapshotAssembler assembler_;
    FindingEngine findings_;
    ProjectResolver resolver_;
    EnergyImpactSampler energySampler_;
    std::optional<VNCPUTicks> cpuTicks_;
    std::vector<CPUPoint> cpuHistory_;
    FanStateMachine fanMachine_;
    FanSnapshot lastFan_;
    SystemMemorySnapshot lastMemory_;
    std::optional<Date> lastSample_;
    Date lastMetrics_ = Date::distantPast();
    std::uint64_t passes_ = 0;
    std::shared_ptr<const MonitorSnapshot> mostRecent_;

    // Memory across runs.
    SessionArchive archive_;
    BatteryMonitoring batteryMonitor_;
    Date lastArchiveWrite_ = Date::distantPast();
    std::optional<std::string> persistenceError_;

    /// What delayed steps look at before they touch the engine. Last, so that it ends first.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace varnet
