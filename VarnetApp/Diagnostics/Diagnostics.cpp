#include "VarnetApp/Diagnostics/Diagnostics.h"

#include "VarnetApp/Diagnostics/OwnUsage.h"
#include "VarnetApp/Diagnostics/SensorRoot.h"
#include "VarnetApp/Diagnostics/SnapshotReport.h"
#include "VarnetApp/Engine/MonitorEngine.h"
#include "VarnetApp/Platform/ApplicationCatalog.h"
#include "VarnetApp/Platform/BatteryPower.h"
#include "VarnetCore/Base/Clock.h"
#include "probes/SystemProbes.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace varnet::Diagnostics {

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr auto loopPause = std::chrono::seconds(1); // the main loop's own
constexpr double patience = 7;                      // seconds for a complete reading

double secondsSince(SteadyClock::time_point start) {
    return std::chrono::duration<double>(SteadyClock::now() - start).count();
}

/// The monitor as the program runs it, on a storage of its own.
struct Monitor {
    explicit Monitor(const std::filesystem::path& storage, const std::string& sensors = {})
        : probes(sensors), battery(platform::makeBatteryReader(sensors)),
          engine(
              {.probes = probes, .clock = clock, .storage = storage, .home = {}, .battery = battery.get()}) {}

    std::shared_ptr<const MonitorSnapshot> sample() {
        const auto thermal = static_cast<Thermal>(std::clamp(probes.thermalState(), 0, 3));
        return engine.sample(catalog->snapshot(), thermal, true);
    }

    /// Samples until two metric readings lie behind the result.
    std::shared_ptr<const MonitorSnapshot> completeReading() {
        const auto start = SteadyClock::now();
        for (;;) {
            auto snapshot = sample();
            if ((!snapshot->error && snapshot->systemCPU) || secondsSince(start) > patience) return snapshot;
            std::this_thread::sleep_for(loopPause);
        }
    }

    SystemProbes probes;
    SystemClock clock;
    std::unique_ptr<BatteryReader> battery;
    MonitorEngine engine;
    std::unique_ptr<ApplicationCatalog> catalog = makeApplicationCatalog(clock);
};

void print(const std::string& text) {
    fmt::print("{}\n", text);
}

} // namespace

int run() {
    Monitor monitor("artifacts/diagnostic-state", sensorRoot());
    const auto snapshot = monitor.completeReading();
    auto report = SnapshotReport::json(*snapshot);
    const auto& warning = monitor.engine.persistenceError();
    report["historyWarning"] = warning ? nlohmann::ordered_json(*warning) : nlohmann::ordered_json(nullptr);
    print(SnapshotReport::text(report));
    return snapshot->error ? 1 : 0;
}

int benchmark(double seconds) {
    Monitor monitor("artifacts/benchmark-state");
    const double ownBefore = ownCPUSeconds();
    const auto start = SteadyClock::now();
    double inSamples = 0;
    int samples = 0;
    std::shared_ptr<const MonitorSnapshot> snapshot;
    do {
        const auto sampleStart = SteadyClock::now();
        snapshot = monitor.sample();
        inSamples += secondsSince(sampleStart);
        ++samples;
        std::this_thread::sleep_for(loopPause);
    } while (secondsSince(start) < seconds);
    const double wall = secondsSince(start);

    const nlohmann::ordered_json report = {
        {"cpuPercentOfOneCore", (ownCPUSeconds() - ownBefore) / wall * 100},
        {"meanSampleWallMs", inSamples / samples * 1000},
        {"processes", snapshot->processes.size()},
        {"samples", samples},
        {"peakResidentBytes", ownPeakBytes()},
    };
    print(SnapshotReport::text(report));
    return snapshot->error ? 1 : 0;
}

int liveReading() {
    Monitor monitor({}); // the program itself, without its windows
    const auto snapshot = monitor.completeReading();
    fmt::print("{}", SnapshotReport::page(*snapshot));
    if (snapshot->error) print(*snapshot->error);
    return snapshot->error ? 1 : 0;
}

} // namespace varnet::Diagnostics
