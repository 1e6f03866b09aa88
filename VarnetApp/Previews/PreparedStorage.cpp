#include "VarnetApp/Previews/PreparedStorage.h"

#include "VarnetApp/Previews/PreparedMachine.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace varnet {

namespace {

constexpr double day = 86'400;

std::uint64_t gigabytes(double number) {
    return static_cast<std::uint64_t>(number * 1e9);
}

struct Folder {
    const char* path;
    const char* repository;
    const char* name;
    const char* branch;
    const char* source;
    bool worktree;
    std::array<double, 4> buckets; ///< gigabytes, in the buckets' order
    double daysAgo;
};

constexpr const char* agentCode = "Claude Code";
constexpr const char* manager = "Conductor";
constexpr const char* seen = "Observed project";
constexpr const char* local = "Local folder";
constexpr const char* managed = "/home/dana/conductor/workspaces/mobile-shell";

// clang-format off
constexpr Folder folders[] = {
    {"/home/dana/code/storefront", "/home/dana/code/storefront", "storefront", "main", seen, false, {7.6, 3.2, 2.6, 4.8}, 0},
    {"/home/dana/code/storefront/.claude/worktrees/checkout", "/home/dana/code/storefront", "storefront", "feature/checkout", agentCode, true, {7.4, 3.4, 1.3, 2.6}, 1},
    {"/home/dana/code/storefront/.claude/worktrees/cart-total", "/home/dana/code/storefront", "storefront", "fix/cart-total", agentCode, true, {4.6, 2.0, 1.0, 2.0}, 9},
    {"/home/dana/code/storefront/.claude/worktrees/passkeys", "/home/dana/code/storefront", "storefront", "spike/passkeys", agentCode, true, {1.9, 0.8, 0.7, 0.9}, 40},
    {"/home/dana/code/api-gateway", "/home/dana/code/api-gateway", "api-gateway", "main", seen, false, {4.2, 0.7, 8.4, 4.1}, 0},
    {"/home/dana/.codex/worktrees/gateway-1", "/home/dana/code/api-gateway", "api-gateway", "codex/rate-limits", "Codex", true, {2.9, 1.1, 1.2, 2.4}, 4},
    {"/home/dana/.codex/worktrees/gateway-2", "/home/dana/code/api-gateway", "api-gateway", "codex/otel", "Codex", true, {2.3, 0.7, 1.0, 2.2}, 22},
    {"/home/dana/conductor/workspaces/mobile-shell/lima", nullptr, "mobile-shell", "dana/onboarding", manager, true, {3.8, 1.7, 0.3, 1.1}, 0},
    {"/home/dana/conductor/workspaces/mobile-shell/oslo", nullptr, "mobile-shell", "dana/push-tokens", manager, true, {3.2, 1.5, 0.3, 1.1}, 3},
    {"/home/dana/conductor/workspaces/mobile-shell/quito", nullptr, "mobile-shell", "dana/dark-mode", manager, true, {3.1, 1.5, 0.4, 1.2}, 12},
    {"/home/dana/conductor/workspaces/mobile-shell/riga", nullptr, "mobile-shell", "dana/spike", manager, true, {2.8, 1.3, 0.4, 1.1}, 61},
    {"/home/dana/conductor/workspaces/mobile-shell", nullptr, "mobile-shell", "Shared files", manager, false, {0, 0, 0, 0.1}, 61},
    {"/home/dana/code/design-tokens", "/home/dana/code/design-tokens", "design-tokens", "main", local, false, {8.7, 1.7, 1.4, 2.3}, 6},
    {"/home/dana/code/billing-worker", "/home/dana/code/billing-worker", "billing-worker", "main", local, false, {2.1, 0.4, 0.9, 1.2}, 2},
    {"/home/dana/code/docs-site", "/home/dana/code/docs-site", "docs-site", "main", local, false, {1.9, 0.8, 0.6, 0.4}, 15},
    {"/home/dana/code/admin-console", "/home/dana/code/admin-console", "admin-console", "main", local, false, {1.8, 0.3, 0.5, 0.5}, 30},
    {"/home/dana/code/playground", "/home/dana/code/playground", "playground", "main", local, false, {1.2, 0.4, 0.2, 0.9}, 3},
    {"/home/dana/code/ml-notebooks", "/home/dana/code/ml-notebooks", "ml-notebooks", "main", local, false, {0, 0, 0.3, 2.2}, 90},
    {"/home/dana/code/e2e-suite", "/home/dana/code/e2e-suite", "e2e-suite", "main", local, false, {0.9, 0.2, 0.1, 0.2}, 8},
    {"/home/dana/code/infra", "/home/dana/code/infra", "infra", "main", local, false, {0, 0, 0.6, 0.3}, 20},
    {"/home/dana/code/icons", "/home/dana/code/icons", "icons", "main", local, false, {0.5, 0, 0.1, 0.2}, 120},
    {"/home/dana/code/cli", "/home/dana/code/cli", "cli", "main", local, false, {0, 0, 0.2, 0.3}, 11},
    {"/home/dana/code/dotfiles", "/home/dana/code/dotfiles", "dotfiles", "main", local, false, {0, 0, 0.1, 0.1}, 200},
};
// clang-format on

StorageCandidate candidate(const StorageProject& project, const char* below, StorageBucket bucket,
                           double gigabyte) {
    return {project.path + "/" + below, project.path, bucket, gigabytes(gigabyte), {}};
}

StorageProject made(const Folder& folder) {
    StorageProject project;
    project.path = folder.path;
    project.source = folder.source;
    project.name = folder.name;
    project.branch = folder.branch;
    project.worktree = folder.worktree;
    for (std::size_t i = 0; i < allStorageBuckets.size(); ++i)
        if (folder.buckets[i] > 0) project.buckets[allStorageBuckets[i]] = gigabytes(folder.buckets[i]);
    const double dependencies = folder.buckets[0];
    const double caches = folder.buckets[1];
    if (folder.repository) {
        project.repository = folder.repository;
    } else {
        project.container = managed;
    }
    project.gitSummary = folder.daysAgo > 20 ? "No uncommitted files found"
                                             : "Uncommitted or untracked files · 2 unpushed commits";
    if (project.isContainer()) project.gitSummary = "Shared files outside worktrees";
    project.lastModified = PreparedMachine::now() - folder.daysAgo * day;
    project.partial = false;
    project.measured = true;
    project.logicalBytes = project.bytes();
    project.entryCount = 120'000;
    if (dependencies > 3) {
        project.candidates = {
            candidate(project, "node_modules", StorageBucket::dependencies, dependencies * 0.45),
            candidate(project, "apps/web/.next/cache", StorageBucket::caches, caches * 0.6),
            candidate(project, "apps/web/node_modules", StorageBucket::dependencies, dependencies * 0.16),
            candidate(project, ".turbo", StorageBucket::caches, caches * 0.19)};
    } else if (dependencies > 1.5) {
        project.candidates = {
            candidate(project, "node_modules", StorageBucket::dependencies, dependencies * 0.5)};
    }
    return project;
}

std::shared_ptr<StorageScan> everything() {
    auto scan = std::make_shared<StorageScan>();
    for (const Folder& folder : folders)
        scan->projects.push_back(made(folder));
    std::ranges::stable_sort(scan->projects, std::ranges::greater{},
                             [](const StorageProject& project) { return project.bytes(); });
    scan->date = PreparedMachine::now();
    return scan;
}

void lameOne(StorageScan& scan) {
    for (StorageProject& project : scan.projects)
        if (project.branch == "spike/passkeys") {
            project.partial = true;
            project.candidates.clear();
        }
    scan.partial = true;
}

} // namespace

PreparedStorage::Scan PreparedStorage::complete() {
    return everything();
}

PreparedStorage::Scan PreparedStorage::measured() {
    auto scan = everything();
    lameOne(*scan);
    // The pictures of ordinary work have no notice above the map.
    scan->partial = false;
    return scan;
}

PreparedStorage::Scan PreparedStorage::halfway() {
    auto scan = everything();
    scan->partial = true;
    std::size_t at = 0;
    for (StorageProject& project : scan->projects) {
        if (++at <= 8) continue;
        project.partial = true;
        project.measured = false;
        project.candidates.clear();
        project.lastModified.reset();
        if (at > 9) project.buckets.clear();
        project.gitSummary = at == 9 ? "Measuring…" : "Waiting for scan";
    }
    return scan;
}

PreparedStorage::Scan PreparedStorage::stopped() {
    auto scan = everything();
    lameOne(*scan);
    for (StorageProject& project : scan->projects)
        if (project.bytes() < gigabytes(3)) {
            project.partial = true;
            project.measured = false;
            project.buckets.clear();
            project.candidates.clear();
            project.gitSummary = "Waiting for scan";
        }
    scan->notes = {"Couldn’t read sealed. Add that folder to grant access.",
                   "Scan stopped. Some folders are still unmeasured. Rescan to finish."};
    return scan;
}

PreparedStorage::Scan PreparedStorage::nothing() {
    auto scan = std::make_shared<StorageScan>();
    scan->date = PreparedMachine::now();
    return scan;
}

PreparedStorage::Scan PreparedStorage::lengthy() {
    auto scan = everything();
    for (StorageProject& project : scan->projects) {
        project.name += "-with-a-name-that-somebody-has-typed-in-full";
        project.branch += "/and-a-branch-that-says-everything-that-it-is-about";
        for (auto& [bucket, bytes] : project.buckets)
            bytes *= 97;
        for (StorageCandidate& each : project.candidates) {
            each.bytes *= 97;
            each.path.insert(project.path.size() + 1, "packages/a-package-deep-down/in-the-tree/");
        }
    }
    return scan;
}

StorageProject PreparedStorage::project(std::string_view branch) {
    const Scan scan = measured();
    const auto found = std::ranges::find(scan->projects, branch, &StorageProject::branch);
    return found == scan->projects.end() ? StorageProject{} : *found;
}

StorageProject PreparedStorage::bare() {
    StorageProject project = PreparedStorage::project("feature/checkout");
    project.candidates.clear();
    return project;
}

} // namespace varnet
