// What a pass costs the finding engine on a machine where nearly everything sleeps.

#include "VarnetCore/Findings/FindingEngine.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace varnet;

constexpr std::uint64_t bootTime = 1'790'000'000;

SampleRef process(std::int64_t number) {
    ProcessSample sample;
    sample.id = {bootTime, static_cast<std::int32_t>(number + 2),
                 (bootTime + static_cast<std::uint64_t>(number)) * 1'000'000};
    sample.name = "node";
    sample.cpu = 0;
    sample.memory = 1'000'000;
    return std::make_shared<const ProcessSample>(std::move(sample));
}

/// One server a worktree, as they mostly are, none alike.
Service server(std::int64_t number) {
    ProcessSample sample = *process(number);
    const std::string root = "/home/me/work/project" + std::to_string(number);
    sample.project = std::make_shared<const Project>(Project{root, root, "project", "main"});
    sample.cwd = root;
    sample.portsAvailable = true;
    sample.ports = {3000 + static_cast<int>(number)};
    sample.arguments = {"node", root + "/node_modules/.bin/vite", "--port", std::to_string(3000 + number)};
    auto shared = std::make_shared<const ProcessSample>(std::move(sample));
    return {shared, {shared}};
}

/// Idle groups, some busy ones among them, and servers.
void evaluatePass(benchmark::State& state) {
    std::vector<SampleRef> processes;
    std::vector<ApplicationGroup> groups;
    for (std::int64_t number = 0; number < state.range(0) + state.range(1); ++number) {
        processes.push_back(process(number));
        ApplicationGroup group;
        group.id = "process:" + processes.back()->id.id();
        group.processes = {processes.back()};
        if (number < state.range(1)) {
            ProcessSample busy = *processes.back();
            busy.cpu = 100;
            group.processes = {std::make_shared<const ProcessSample>(busy)};
        }
        groups.push_back(std::move(group));
    }
    std::vector<Service> services;
    for (std::int64_t number = 0; number < state.range(2); ++number)
        services.push_back(server(number));
    FindingEngine engine;
    Date now = Date::fromUnix(static_cast<double>(bootTime + 10'000));
    for (auto _ : state) {
        benchmark::DoNotOptimize(engine.evaluate(groups, services, processes, now));
        now = now + 2;
    }
}

BENCHMARK(evaluatePass)
    ->ArgNames({"idle", "busy", "servers"})
    ->Args({2000, 0, 0})
    ->Args({2000, 10, 0})
    ->Args({0, 0, 200})
    ->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
