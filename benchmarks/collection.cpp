// What a pass costs the collection of badges.

#include "VarnetCore/Hall/FlameCollection.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>

namespace {

using namespace varnet;

constexpr std::uint64_t bootTime = 1'790'000'000;

/// Applications of five processes each, a fifth of them credited to an agent; servers and findings.
MonitorSnapshot machine(int processes, bool verified) {
    MonitorSnapshot snapshot;
    snapshot.date = Date::fromUnix(static_cast<double>(bootTime + 90'000));
    snapshot.systemCPU = 12;
    snapshot.logicalCores = 8;
    for (int number = 0; number < processes; ++number) {
        ProcessSample sample;
        sample.id = {bootTime, number + 2, (bootTime + static_cast<std::uint64_t>(number)) * 1'000'000};
        sample.cpu = number % 7;
        sample.averageCPU = number % 5;
        sample.memory = 1'000'000;
        if (number % 5 == 0) {
            const std::int32_t origin = verified ? 2 : 1'000'000;
            sample.attribution = std::make_shared<const Attribution>(Attribution{
                "Claude Code", {bootTime, origin, bootTime * 1'000'000}, Confidence::observed, "", {}});
        }
        snapshot.processes.push_back(std::make_shared<const ProcessSample>(std::move(sample)));
        if (number % 5 == 0) {
            snapshot.groups.emplace_back();
            snapshot.groups.back().kind = GroupKind::application;
            snapshot.groups.back().name = "Application " + std::to_string(number);
        }
        snapshot.groups.back().processes.push_back(snapshot.processes.back());
    }
    for (int number = 0; number < 20; ++number)
        snapshot.services.push_back({snapshot.processes[static_cast<std::size_t>(number)], {}});
    for (std::size_t number = 0; number < 5; ++number) {
        Finding finding;
        finding.kind = FindingKind::forgotten;
        finding.targets = {snapshot.processes[number * 4]->id};
        snapshot.findings.push_back(std::move(finding));
    }
    return snapshot;
}

/// A collection of three months, one pass a second.
void observe(benchmark::State& state) {
    MonitorSnapshot snapshot = machine(static_cast<int>(state.range(0)), state.range(1) != 0);
    FlameArchive archive;
    archive.timezone = "Europe/Prague";
    FlameCollection collection(std::move(archive));
    for (int day = 1; day < FlameArchive::mostDays; ++day)
        collection.cleaned(1, 1, snapshot.date - 86'400.0 * (FlameArchive::mostDays - day));
    for (auto _ : state) {
        snapshot.date = snapshot.date + 1;
        benchmark::DoNotOptimize(collection.observe(snapshot));
    }
}

BENCHMARK(observe)
    ->ArgNames({"processes", "verified"})
    ->Args({500, 1})
    ->Args({500, 0})
    ->Args({2000, 1})
    ->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
