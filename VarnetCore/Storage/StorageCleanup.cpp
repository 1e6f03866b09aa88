#include "VarnetCore/Storage/StorageCleanup.h"

#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Storage/StoragePaths.h"
#include "VarnetCore/Storage/TotalBytes.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>

namespace varnet {

namespace {

using Refusal = std::unexpected<StorageCleanupError>;

Refusal refuse(StorageCleanupError error) {
    return Refusal(error);
}

StorageCleanup::Failure refused(StorageCleanupError error) {
    return {error, std::string(errorDescription(error))};
}

bool exists(const std::string& path) {
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0;
}

/// The folder that holds the package.json of a reviewed kind of folder; empty for any other kind.
std::string_view projectFolder(std::string_view path) noexcept {
    const std::string_view name = LexicalPath::lastComponent(path);
    const std::string_view parent = LexicalPath::parent(path);
    if (name == "node_modules" || name == ".turbo") return parent;
    if (name == "cache" && LexicalPath::lastComponent(parent) == ".next") return LexicalPath::parent(parent);
    return {};
}

bool isBusy(const std::string& projectPath, std::span<const std::string> activePaths) {
    return std::ranges::any_of(activePaths, [&projectPath](const std::string& path) {
        return StoragePaths::contains(StoragePaths::canonical(path), projectPath);
    });
}

} // namespace

StorageCleanup::StorageCleanup(Setup setup) : setup_(std::move(setup)) {}

std::expected<void, StorageCleanupError>
StorageCleanup::validate(const StorageCandidate& candidate, std::span<const std::string> activePaths) const {
    using enum StorageCleanupError;
    const std::string& path = candidate.path;
    const std::string& projectPath = candidate.projectPath;
    if (path == projectPath || !path.starts_with(projectPath + '/')) return refuse(changed);
    if (StoragePaths::canonical(path) != path || StoragePaths::canonical(projectPath) != projectPath) {
        return refuse(changed);
    }
    const auto identity = DiskIdentity::read(path);
    if (identity != candidate.identity) return refuse(changed);
    if (identity->owner != getuid()) return refuse(permission);
    const std::string_view project = projectFolder(path);
    // A repository's own data is never a dependency or a cache, whatever its folders are called.
    const bool inGitData = StoragePaths::bucket(candidate.relativePath()) == StorageBucket::git;
    if (project.empty() || inGitData) return refuse(unsupported);
    if (!exists(std::string(project) + "/package.json")) return refuse(unsupported);
    if (isBusy(projectPath, activePaths)) return refuse(busy);
    if (!setup_.git.ignoredAndUntracked(path, projectPath)) return refuse(tracked);
    if (const auto contents = checkContents(path, identity->device); !contents) return contents;
    if (DiskIdentity::read(path) != identity || StoragePaths::canonical(path) != path) return refuse(changed);
    return {};
}

std::expected<void, StorageCleanupError> StorageCleanup::checkContents(const std::string& path,
                                                                       std::int32_t device) const {
    using enum StorageCleanupError;
    using SteadyClock = std::chrono::steady_clock;
    const auto walk = setup_.probes.walkDisk(path, DiskScope::everything);
    if (!walk) return refuse(incomplete);
    const auto deadline = SteadyClock::now() + std::chrono::duration<double>(setup_.contentsTimeout);
    VNDiskEntry entry{};
    for (;;) {
        const std::int32_t step = walk->next(entry);
        if (step == 0) return {};
        if (step < 0 || entry.path == nullptr || SteadyClock::now() > deadline) return refuse(incomplete);
        if (std::string_view(entry.path) == path && entry.kind == VN_DISK_DIRECTORY) continue;
        if (LexicalPath::lastComponent(entry.path) == ".git") return refuse(unsupported);
        // What is mounted in the folder would go along with it, and is not what was measured.
        if (entry.kind == VN_DISK_ERROR || entry.device != device) return refuse(incomplete);
    }
}

std::expected<std::optional<std::string>, StorageCleanup::Failure>
StorageCleanup::moveToTrash(const StorageCandidate& candidate, const ActivePaths& activePaths) const {
    using enum StorageCleanupError;
    const auto before = activePaths();
    if (!before) return std::unexpected(refused(before.error()));
    if (const auto valid = validate(candidate, *before); !valid)
        return std::unexpected(refused(valid.error()));
    const auto now = activePaths();
    if (!now) return std::unexpected(refused(now.error()));
    if (isBusy(candidate.projectPath, *now)) return std::unexpected(refused(busy));
    const bool same = DiskIdentity::read(candidate.path) == candidate.identity &&
                      StoragePaths::canonical(candidate.path) == candidate.path;
    if (!same) return std::unexpected(refused(changed));
    auto moved = setup_.trash.moveToTrash(candidate.path, candidate.identity);
    if (!moved) return std::unexpected(Failure{std::nullopt, std::move(moved).error()});
    return *std::move(moved);
}

StorageCleanup::Outcome StorageCleanup::clean(std::span<const StorageCandidate> candidates,
                                              const ActivePaths& activePaths) const {
    Outcome outcome;
    for (const StorageCandidate& candidate : candidates) {
        auto moved = moveToTrash(candidate, activePaths);
        if (!moved) {
            outcome.failures.push_back(candidate.relativePath() + ": " + moved.error().text);
            continue;
        }
        ++outcome.moved;
        addToTotal(outcome.bytes, candidate.bytes);
        if (*moved) outcome.trashLocations.push_back(**std::move(moved));
    }
    return outcome;
}

} // namespace varnet
