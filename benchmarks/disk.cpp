// What the disk map costs beside the scan itself: asking for a folder while the index is written, and laying
// out a large one.

#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Disk/DiskUsageIndex.h"
#include "VarnetCore/Disk/DiskUsageIndexWriter.h"
#include "VarnetCore/Disk/StorageTreemap.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace varnet;

void fail(const char* what) {
    std::fprintf(stderr, "%s failed\n", what);
    std::exit(1);
}

/// An index with a folder of so many files, which a second thread goes on filling elsewhere.
class BusyIndex {
public:
    explicit BusyIndex(int files) : index_(DiskUsageIndex::make().value_or(nullptr)) {
        if (!index_) fail("making an index");
        auto writer = DiskUsageIndexWriter::open(index_->database(), clock_);
        if (!writer || !writer->startRoot("/r", false)) fail("opening the writer");
        bool good = writer->record("/r/folder", true, 4096, false).has_value();
        for (int file = 0; file < files; ++file)
            good = good && writer->record("/r/folder/file-" + std::to_string(file), false,
                                          static_cast<std::uint64_t>(file) * 512, false);
        if (!good || !writer->checkpoint({}, true)) fail("filling the index");
        thread_ = std::thread([this, writer = std::move(*writer)]() mutable {
            bool open = true;
            for (int folder = 0; !ended_ && open; ++folder) {
                const std::string path = "/r/more-" + std::to_string(folder);
                open = writer.record(path, true, 4096, false).has_value();
                for (int file = 0; file < 100 && open; ++file)
                    open = writer.record(path + "/f" + std::to_string(file), false, 512, false).has_value();
                open = open && writer.checkpoint({}, false);
            }
        });
    }
    ~BusyIndex() {
        ended_ = true;
        thread_.join();
    }

    const DiskUsageIndex& index() const { return *index_; }

private:
    SystemClock clock_;
    std::shared_ptr<DiskUsageIndex> index_;
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

void folderWhileWriting(benchmark::State& state) {
    const BusyIndex busy(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const auto answer = busy.index().folder("/r/folder");
        if (!answer || !*answer || (*answer)->entries.size() != static_cast<std::size_t>(state.range(0)))
            fail("asking for the folder");
        benchmark::DoNotOptimize(answer);
    }
}
BENCHMARK(folderWhileWriting)->Arg(200)->Arg(20000)->Unit(benchmark::kMillisecond)->UseRealTime();

void treemap(benchmark::State& state) {
    std::vector<double> weights;
    for (int at = 0; at < 20000; ++at)
        weights.push_back(1e12 / (1 + at));
    for (auto _ : state)
        benchmark::DoNotOptimize(StorageTreemap::rectangles(weights, {0, 0, 488, 478}));
}
BENCHMARK(treemap)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
