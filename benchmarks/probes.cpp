// What the kernel layer costs with 2,000 sleeping processes on the machine. Figures "per process" are
// nanoseconds of one call divided by the processes it answered for.

#include "probes/vn_probes.h"

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <vector>

#include "benchmarks/IdleFarm.h"

namespace {

constexpr int sleepers = 2000;

/// Reports the mean cost of one process in an answer.
void reportPerProcess(benchmark::State& state, std::int32_t processes) {
    state.counters["processes"] = processes;
    state.counters["per_process"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * processes,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

template <std::int32_t (*list)(VNProcessEntry**)>
void listing(benchmark::State& state) {
    std::int32_t count = 0;
    for ([[maybe_unused]] auto _ : state) {
        VNProcessEntry* entries = nullptr;
        count = list(&entries);
        vn_free(entries);
    }
    if (count < 0) state.SkipWithError("the process table cannot be read");
    reportPerProcess(state, count);
}

/// Reads two seconds apart on the table's clock would take too long: the memory turns, which go by that
/// clock, are measured by `tableReadOfAPass`.
template <std::int32_t full>
void tableRead(benchmark::State& state) {
    const std::unique_ptr<VNTable, decltype(&vn_table_close)> table(vn_table_open(), vn_table_close);
    const VNTableEntry* entries = nullptr;
    std::int32_t count = vn_table_read(table.get(), 1, &entries);
    for ([[maybe_unused]] auto _ : state) {
        count = vn_table_read(table.get(), full, &entries);
        benchmark::DoNotOptimize(entries);
    }
    if (count < 0) state.SkipWithError("the process table cannot be read");
    reportPerProcess(state, count);
}

/// One full read after two seconds of sleep, as the engine reads: with its share of the memory turns and with
/// caches as cold as they then are.
void tableReadOfAPass(benchmark::State& state) {
    const std::unique_ptr<VNTable, decltype(&vn_table_close)> table(vn_table_open(), vn_table_close);
    const VNTableEntry* entries = nullptr;
    std::int32_t count = vn_table_read(table.get(), 1, &entries);
    double seconds = 0;
    for ([[maybe_unused]] auto _ : state) {
        sleep(2);
        timespec before{};
        timespec after{};
        clock_gettime(CLOCK_MONOTONIC, &before);
        count = vn_table_read(table.get(), 1, &entries);
        clock_gettime(CLOCK_MONOTONIC, &after);
        const double elapsed = static_cast<double>(after.tv_sec - before.tv_sec) +
                               static_cast<double>(after.tv_nsec - before.tv_nsec) / 1e9;
        state.SetIterationTime(elapsed);
        seconds += elapsed;
    }
    if (count < 1) return state.SkipWithError("the process table cannot be read");
    state.counters["processes"] = count;
    state.counters["per_process"] = seconds / static_cast<double>(state.iterations()) / count;
}

void openListeners(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state)
        vn_listeners_close(vn_listeners_open());
}

/// This process with 50 descriptors: a listener, other sockets and files, in equal parts.
void portsOfOneProcess(benchmark::State& state) {
    std::vector<int> descriptors;
    const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    listen(listener, 1);
    descriptors.push_back(listener);
    while (descriptors.size() < 47) {
        const bool even = descriptors.size() % 2 == 0;
        descriptors.push_back(even ? socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)
                                   : open("/dev/null", O_RDONLY | O_CLOEXEC));
    }
    const std::unique_ptr<VNListeners, decltype(&vn_listeners_close)> listeners(vn_listeners_open(),
                                                                                vn_listeners_close);
    std::array<std::uint16_t, 64> ports{};
    std::int32_t count = 0;
    for ([[maybe_unused]] auto _ : state) {
        count = vn_listeners_ports(listeners.get(), getpid(), ports.data(), ports.size());
    }
    if (count != 1) state.SkipWithError("the listener was not found");
    for (const int descriptor : descriptors)
        close(descriptor);
}

BENCHMARK(listing<vn_processes>)->Name("vn_processes")->Unit(benchmark::kMillisecond);
BENCHMARK(listing<vn_process_graph>)->Name("vn_process_graph")->Unit(benchmark::kMillisecond);
BENCHMARK(tableRead<1>)->Name("vn_table_read/full")->Unit(benchmark::kMillisecond);
BENCHMARK(tableRead<0>)->Name("vn_table_read/cheap")->Unit(benchmark::kMillisecond);
BENCHMARK(tableReadOfAPass)
    ->Name("vn_table_read/full/after_2s")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(13);
BENCHMARK(openListeners)->Name("vn_listeners_open")->Unit(benchmark::kMicrosecond);
BENCHMARK(portsOfOneProcess)->Name("vn_listeners_ports")->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    const varnet::IdleFarm farm(sleepers);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
