#include "VarnetApp/Diagnostics/BatteryDiagnostics.h"

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
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace varnet::BatteryDiagnostics {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* storage = "artifacts/battery-module/diagnostic-state";
constexpr int passes = 3; ///< scores need two readings of the counters
constexpr auto betweenPasses = std::chrono::milliseconds(2100);
constexpr std::size_t shownScores = 5;

template <class Value>
Json orNone(const std::optional<Value>& value) {
    return value ? Json(*value) : Json("none");
}

Json json(const BatteryReading& reading) {
    return {{"date", reading.date.seconds},
            {"availability", rawValue(reading.availability)},
            {"state", rawValue(reading.state)},
            {"charge", orNone(reading.charge)},
            {"health", orNone(reading.health)},
            {"condition", rawValue(reading.condition)},
            {"cycles", orNone(reading.cycles)},
            {"fullCapacity", orNone(reading.fullCapacity)},
            {"designCapacity", orNone(reading.designCapacity)},
            {"watts", orNone(reading.watts)},
            {"temperature", orNone(reading.temperature)},
            {"minutesRemaining", orNone(reading.minutesRemaining)},
            {"minutesToFull", orNone(reading.minutesToFull)},
            {"adapterWatts", orNone(reading.adapterWatts)},
            {"lowPowerMode", reading.lowPowerMode}};
}

/// The groups that use most energy now.
Json highestScores(const MonitorSnapshot& snapshot) {
    std::vector<std::pair<double, std::string>> scores;
    for (const ApplicationGroup& group : snapshot.groups) {
        if (const auto score = group.energyImpact()) scores.emplace_back(*score, group.name);
    }
    std::ranges::stable_sort(scores, std::greater{}, &std::pair<double, std::string>::first);
    if (scores.size() > shownScores) scores.resize(shownScores);
    if (scores.empty()) return "none";
    Json list = Json::array();
    for (const auto& [score, name] : scores)
        list.push_back({{"name", name}, {"score", score}});
    return list;
}

} // namespace

int run() {
    SystemProbes probes(Diagnostics::sensorRoot());
    const SystemClock clock;
    const auto battery = platform::makeBatteryReader(Diagnostics::sensorRoot());
    MonitorEngine engine(
        {.probes = probes, .clock = clock, .storage = storage, .home = {}, .battery = battery.get()});
    const auto catalog = makeApplicationCatalog(clock);
    const auto sample = [&] {
        const auto thermal = static_cast<Thermal>(std::clamp(probes.thermalState(), 0, 3));
        return engine.sample(catalog->snapshot(), thermal, true);
    };
    auto snapshot = sample();
    for (int pass = 1; pass < passes; ++pass) {
        std::this_thread::sleep_for(betweenPasses);
        snapshot = sample();
    }
    Json report = {{"reading", "none"}, {"historyPoints", 0}, {"healthPoints", 0}};
    if (const auto& dashboard = snapshot->battery) {
        report["reading"] = json(dashboard->reading);
        report["historyPoints"] = dashboard->archive.points->size();
        report["healthPoints"] = dashboard->archive.health->size();
    }
    std::error_code error;
    const bool exists =
        std::filesystem::exists(std::filesystem::path(storage) / "battery-history.json", error);
    report["historySaved"] = exists && !engine.batteryWarning();
    report["highestImpactScores"] = highestScores(*snapshot);
    report["historyWarning"] = orNone(engine.batteryWarning());
    fmt::print("{}\n", SnapshotReport::text(report));
    return 0;
}

} // namespace varnet::BatteryDiagnostics
