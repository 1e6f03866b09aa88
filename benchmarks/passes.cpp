// What a pass of the monitor costs beside so many idle processes, at the program's own cadence: the turns in
// which sleepers are refreshed, the ten-second reads and the saves all take their real share.
//
// Usage: varnet_bench_passes [COUNT]...   (0 500 2000 5000)

#include "VarnetApp/Engine/MonitorEngine.h"
#include "VarnetCore/Base/Clock.h"
#include "probes/SystemProbes.h"

#include <fmt/format.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "benchmarks/IdleFarm.h"

namespace {

constexpr int passes = 16;
constexpr auto cadence = std::chrono::milliseconds(2010); // just above the engine's two seconds

double cpuSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

std::size_t residentBytes() {
    std::size_t size = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

struct Cost {
    double perPass = 0; ///< CPU seconds
    std::size_t processes = 0;
};

/// @param visible metric passes; else mostly table passes, of which only those are counted
Cost measure(varnet::MonitorEngine& engine, bool visible) {
    Cost cost;
    int counted = 0;
    varnet::Date lastMetrics = varnet::Date::distantPast();
    for (int pass = 0; pass < passes + 1; ++pass) {
        const double before = cpuSeconds();
        const auto snapshot = engine.sample({}, varnet::Thermal::nominal, visible);
        const double used = cpuSeconds() - before;
        cost.processes = snapshot->processes.size();
        // The very first pass reads everything; of hidden ones every third is a metric pass.
        const bool metrics = visible || snapshot->date - lastMetrics >= 5;
        if (metrics) lastMetrics = snapshot->date;
        if (pass > 0 && metrics == visible) {
            cost.perPass += used;
            ++counted;
        }
        std::this_thread::sleep_for(cadence);
    }
    cost.perPass /= counted;
    return cost;
}

void report(int count) {
    const varnet::IdleFarm farm(count);
    const auto storage = std::filesystem::temp_directory_path() / fmt::format("varnet-bench-{}", getpid());
    {
        varnet::SystemProbes probes;
        varnet::SystemClock clock;
        varnet::MonitorEngine engine({.probes = probes, .clock = clock, .storage = storage, .home = {}});
        const Cost metric = measure(engine, true);
        const Cost table = measure(engine, false);
        const auto perProcess = [](const Cost& cost) {
            return cost.perPass * 1e6 / static_cast<double>(cost.processes);
        };
        fmt::print("{:>9}  {:>20.2f}  {:>19.2f}  {:>15.3f}  {:>11.1f}\n", metric.processes,
                   perProcess(metric), perProcess(table), metric.perPass / 2 * 100,
                   static_cast<double>(residentBytes()) / 1e6);
    }
    std::error_code ignored;
    std::filesystem::remove_all(storage, ignored);
}

} // namespace

int main(int argc, char** argv) {
    std::vector<int> counts;
    for (int i = 1; i < argc; ++i)
        counts.push_back(std::atoi(argv[i]));
    if (counts.empty()) counts = {0, 500, 2000, 5000};
    fmt::print("processes  metric us/process     table us/process     % of one core  resident MB\n");
    for (const int count : counts) {
        std::fflush(stdout);
        // A program of its own each, so that one size does not inherit the memory of another.
        const pid_t child = fork();
        if (child == 0) {
            report(count);
            std::fflush(stdout);
            _exit(0);
        }
        waitpid(child, nullptr, 0);
    }
}
