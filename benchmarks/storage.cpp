// What measuring projects costs against `du -s` over the same folders, and how soon a scan ends that is
// stopped. Makes 50 projects of 4,000 entries in a folder of its own first; Git's own time is left out.
//
// Usage: varnet_bench_storage [RUNS]   (5)

#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Storage/StorageScanner.h"
#include "probes/SystemProbes.h"

#include <fmt/format.h>

#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace varnet;
using SteadyClock = std::chrono::steady_clock;

constexpr int projectCount = 50;
constexpr int foldersEach = 400;
constexpr int filesEach = 9;

double secondsSince(SteadyClock::time_point start) {
    return std::chrono::duration<double>(SteadyClock::now() - start).count();
}

/// Shaped like what package managers leave: many folders, few small files in each.
void make(const fs::path& top) {
    constexpr std::array kinds{"src", "node_modules", "web/.next/cache", "packages/ui/node_modules"};
    for (int project = 0; project < projectCount; ++project) {
        const fs::path root = top / fmt::format("project-{:02}", project);
        fs::create_directories(root / "packages/ui");
        fs::create_directories(root / "web");
        for (const char* const below : {"", "packages/ui", "web"})
            std::ofstream(root / below / "package.json") << "{}";
        for (int folder = 0; folder < foldersEach; ++folder) {
            const auto* const kind = kinds.at(static_cast<std::size_t>(folder) % kinds.size());
            const fs::path path = root / kind / fmt::format("some-package-{}", folder) / "lib";
            fs::create_directories(path);
            for (int file = 0; file < filesEach; ++file)
                std::ofstream(path / fmt::format("module-{}.js", file)) << "export default 1;\n";
        }
    }
}

StorageScan scan(const std::string& top, std::shared_ptr<const StorageCancellation> token) {
    SystemProbes probes;
    const SystemClock clock;
    StorageScanner scanner({.token = std::move(token),
                            .probes = probes,
                            .clock = clock,
                            .home = top,
                            .seconds = {},
                            .entryLimit = {},
                            .git = StorageGit(top, std::nullopt)});
    return scanner.scan({{top, "Local folder"}}, RelatedWorktrees::include);
}

} // namespace

int main(int count, char** values) {
    const int runs = count > 1 ? std::max(1, std::atoi(values[1])) : 5;
    std::string top = (fs::temp_directory_path() / "varnet-storage-XXXXXX").string();
    if (mkdtemp(top.data()) == nullptr) return 1;
    make(top);
    const std::string du = "du -s '" + top + "' > /dev/null";
    if (std::system(du.c_str()) != 0) return 1; // into the kernel's caches

    double bestScan = 1e9;
    double bestDu = 1e9;
    double slowestStop = 0;
    std::uint64_t entries = 0;
    for (int run = 0; run < runs; ++run) {
        auto start = SteadyClock::now();
        if (std::system(du.c_str()) != 0) return 1;
        bestDu = std::min(bestDu, secondsSince(start));

        start = SteadyClock::now();
        const StorageScan whole = scan(top, std::make_shared<StorageCancellation>());
        bestScan = std::min(bestScan, secondsSince(start));
        entries = 0;
        for (const StorageProject& project : whole.projects)
            entries += project.entryCount;

        const auto token = std::make_shared<StorageCancellation>();
        std::jthread scanning([&] { scan(top, token); });
        std::this_thread::sleep_for(std::chrono::milliseconds(40 * (run + 1)));
        token->cancel();
        start = SteadyClock::now();
        scanning.join();
        slowestStop = std::max(slowestStop, secondsSince(start));
    }
    fs::remove_all(top);
    fmt::print("{} entries: scan {:.3f} s, du -s {:.3f} s, ratio {:.2f}; stopped within {:.1f} ms\n", entries,
               bestScan, bestDu, bestScan / bestDu, slowestStop * 1000);
    return 0;
}
