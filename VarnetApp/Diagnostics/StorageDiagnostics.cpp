#include "VarnetApp/Diagnostics/StorageDiagnostics.h"

#include "VarnetApp/Diagnostics/SnapshotReport.h"
#include "VarnetApp/Engine/AppData.h"
#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Storage/StoragePaths.h"
#include "VarnetCore/Storage/StorageScanner.h"
#include "probes/SystemProbes.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <memory>

namespace varnet::StorageDiagnostics {

namespace {

using Json = nlohmann::ordered_json;

Json json(const StorageProject& project) {
    Json buckets = Json::object();
    for (const auto& [bucket, bytes] : project.buckets)
        buckets[std::string(rawValue(bucket))] = bytes;
    Json candidates = Json::array();
    for (const StorageCandidate& candidate : project.candidates) {
        candidates.push_back({{"path", candidate.path},
                              {"relativePath", candidate.relativePath()},
                              {"bucket", rawValue(candidate.bucket)},
                              {"bytes", candidate.bytes}});
    }
    return {{"path", project.path},     {"source", project.source},     {"name", project.name},
            {"branch", project.branch}, {"worktree", project.worktree}, {"buckets", buckets},
            {"candidates", candidates}, {"partial", project.partial},   {"gitSummary", project.gitSummary}};
}

} // namespace

int run(const std::vector<std::string>& folders) {
    const std::string home = AppData::home().string();
    std::vector<StorageLocation> locations = StoragePaths::defaults(home);
    for (const std::string& folder : folders)
        locations.push_back({folder, "Local folder"});
    SystemProbes probes;
    const SystemClock clock;
    StorageScanner scanner({.token = std::make_shared<StorageCancellation>(),
                            .probes = probes,
                            .clock = clock,
                            .home = home,
                            .seconds = {},
                            .entryLimit = {},
                            .git = {}});
    const StorageScan scan = scanner.scan(locations, RelatedWorktrees::include);

    std::uint64_t logicalBytes = 0;
    std::uint64_t items = 0;
    Json projects = Json::array();
    for (const StorageProject& project : scan.projects) {
        logicalBytes += project.logicalBytes;
        items += project.entryCount;
        projects.push_back(json(project));
    }
    const Json report = {{"measured", scan.measuredCount()},
                         {"allocatedBytes", scan.bytes()},
                         {"logicalBytes", logicalBytes},
                         {"reviewBytes", scan.reviewBytes()},
                         {"items", items},
                         {"notes", scan.notes},
                         {"projects", projects}};
    fmt::print("{}\n", SnapshotReport::text(report));
    return 0;
}

} // namespace varnet::StorageDiagnostics
