// What the battery costs a metric pass once its history is full, and what the save every 30 seconds costs.

#include "VarnetCore/Battery/BatteryTracker.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

using namespace varnet;

constexpr Date start{800'000'000};
constexpr std::int64_t appCount = 60;

std::string appID(std::int64_t number) {
    return "app:/usr/share/applications/application-" + std::to_string(number) + ".desktop";
}

/// A week of points, a year of estimates and as many sessions as are kept.
BatteryArchive fullArchive() {
    BatteryArchive archive;
    const Uuid segment = Uuid::random();
    for (double ago = BatteryArchive::pointAge - 120; ago > 0; ago -= 60)
        archive.points.push_back({start - ago, 50, BatteryState::onBattery, -9.5, segment});
    for (double ago = BatteryArchive::healthAge - 86'400; ago > 0; ago -= 86'400)
        archive.health.push_back({start - ago, 91, 214});
    for (std::size_t i = BatteryArchive::mostSessions; i > 1; --i) {
        const Date end = start - static_cast<double>(i) * 40'000;
        BatterySession session{Uuid::random(), end - 7'000, end, 90, 60, 7'000, {}};
        for (std::int64_t app = 0; app < appCount; ++app)
            session.apps[appID(app)] = {appID(app), "Application " + std::to_string(app), 40'000, false};
        archive.sessions.push_back(std::move(session));
    }
    return archive;
}

std::vector<ApplicationGroup> groups(std::int64_t count) {
    std::vector<ApplicationGroup> groups;
    for (std::int64_t number = 0; number < count; ++number) {
        ProcessSample sample;
        sample.instantaneousEnergyImpact = number < appCount ? 4 : 0;
        sample.energyImpact = 4;
        ApplicationGroup group;
        group.id = appID(number);
        group.name = "Application " + std::to_string(number);
        group.processes = {std::make_shared<const ProcessSample>(std::move(sample))};
        groups.push_back(std::move(group));
    }
    return groups;
}

/// Passes of two seconds on battery; the dashboard before is held, as the window holds it.
void settledPass(benchmark::State& state) {
    BatteryTracker tracker(fullArchive());
    const auto measured = groups(state.range(0));
    BatteryReading reading = BatteryReading::missing(BatteryAvailability::available, start);
    reading.state = state.range(1) != 0 ? BatteryState::onBattery : BatteryState::charged;
    reading.charge = 70;
    reading.health = 91;
    reading.watts = -9.5;
    Date now = start;
    auto shown = std::make_shared<const BatteryDashboard>();
    for (auto _ : state) {
        reading.date = now;
        shown = std::make_shared<const BatteryDashboard>(tracker.observe(reading, measured, now));
        now = now + 2;
    }
    state.counters["points"] = static_cast<double>(shown->archive.points->size());
}

void save(benchmark::State& state) {
    const BatteryArchive archive = fullArchive();
    for (auto _ : state)
        benchmark::DoNotOptimize(archive.encode());
}

BENCHMARK(settledPass)
    ->ArgNames({"groups", "onBattery"})
    ->Args({200, 0})
    ->Args({200, 1})
    ->Args({2000, 1})
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(save)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
