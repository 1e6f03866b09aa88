// What the walk costs against the C library's, over one folder that is in the kernel's caches:
// VARNET_WALK_FOLDER, or /usr. Figures "per entry" are nanoseconds.

#include "probes/vn_probes.h"

#include <benchmark/benchmark.h>

#include <fts.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

std::string folder() {
    const char* const chosen = std::getenv("VARNET_WALK_FOLDER");
    return chosen != nullptr ? chosen : "/usr";
}

void report(benchmark::State& state, std::int64_t entries) {
    state.counters["entries"] = static_cast<double>(entries);
    state.counters["per_entry"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * static_cast<double>(entries),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void ownWalk(benchmark::State& state) {
    const std::string path = folder();
    std::int64_t entries = 0;
    for ([[maybe_unused]] auto _ : state) {
        VNDiskWalk* const walk = vn_disk_open(path.c_str());
        VNDiskEntry entry;
        entries = 0;
        while (vn_disk_next(walk, &entry) == 1)
            ++entries;
        vn_disk_close(walk);
    }
    report(state, entries);
}

void libraryWalk(benchmark::State& state) {
    std::string path = folder();
    std::int64_t entries = 0;
    for ([[maybe_unused]] auto _ : state) {
        std::array<char*, 2> roots{path.data(), nullptr};
        FTS* const walk = fts_open(roots.data(), FTS_PHYSICAL | FTS_NOCHDIR, nullptr);
        entries = 0;
        while (const FTSENT* const entry = fts_read(walk)) {
            if (entry->fts_info != FTS_DP) ++entries;
        }
        fts_close(walk);
    }
    report(state, entries);
}

BENCHMARK(libraryWalk)->Unit(benchmark::kMillisecond);
BENCHMARK(ownWalk)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
