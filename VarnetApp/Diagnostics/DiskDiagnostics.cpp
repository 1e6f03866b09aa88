#include "VarnetApp/Diagnostics/DiskDiagnostics.h"

#include "VarnetApp/Diagnostics/OwnUsage.h"
#include "VarnetApp/Diagnostics/SnapshotReport.h"
#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Disk/DiskUsageScanner.h"
#include "probes/SystemProbes.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace varnet::DiskDiagnostics {

namespace {

using Json = nlohmann::ordered_json;

Json json(const DiskUsageEntry& entry) {
    return {{"path", repairedUtf8(entry.path)},
            {"name", repairedUtf8(entry.name)},
            {"directory", entry.directory},
            {"bytes", entry.bytes},
            {"partial", entry.partial}};
}

int fail(const char* sentence) {
    std::fprintf(stderr, "varnet: %s\n", sentence);
    return 1;
}

} // namespace

int run(const std::vector<std::string>& folders) {
    std::optional<std::string> path;
    if (!folders.empty()) {
        std::error_code error;
        const std::string here = std::filesystem::current_path(error).string();
        path = LexicalPath::resolved(folders.front(), error ? "/" : here);
    }
    DiskIndexFolder::removeStale(DiskIndexFolder::temporary());
    const auto index = DiskUsageIndex::make();
    if (!index) return fail("Couldn’t create the disk map. Try rescanning.");

    SystemProbes probes;
    const SystemClock clock;
    const DiskUsageScanner scanner({.token = std::make_shared<const StorageCancellation>(),
                                    .probes = probes,
                                    .clock = clock,
                                    .volumes = DiskVolumes::read(),
                                    .entryLimit = std::nullopt});
    const double cpuBefore = Diagnostics::ownCPUSeconds();
    const auto begun = std::chrono::steady_clock::now();
    const DiskUsageScan scan = scanner.scan(path, index->get());
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begun;
    const double cpuSeconds = Diagnostics::ownCPUSeconds() - cpuBefore;

    const auto top = (*index)->folder(std::nullopt);
    Json report = {{"entriesRead", scan.entriesRead},
                   {"unreadable", scan.unreadable},
                   {"skippedVolumes", scan.skippedVolumes},
                   {"complete", scan.complete},
                   {"seconds", seconds.count()},
                   {"cpuSeconds", cpuSeconds},
                   {"peakResidentBytes", Diagnostics::ownPeakBytes()},
                   {"entries", Json::array()}};
    if (scan.failure) report["failure"] = *scan.failure;
    if (top && *top)
        for (const DiskUsageEntry& entry : (*top)->entries)
            report["entries"].push_back(json(entry));
    fmt::print("{}\n", SnapshotReport::text(report));
    if (!top || !*top) return fail("Couldn’t open the disk map. Try rescanning.");
    return scan.complete ? 0 : 1;
}

} // namespace varnet::DiskDiagnostics
