#include "VarnetCore/Storage/ProjectMeasure.h"

#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Storage/StoragePaths.h"
#include "VarnetCore/Storage/TotalBytes.h"

#include <sys/stat.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace varnet {

namespace {

/// The folder whose package.json tells that a dependency or cache folder is one; empty for other folders.
std::string_view projectOf(std::string_view path, std::string_view name) noexcept {
    if (name == "node_modules" || name == ".turbo") return LexicalPath::parent(path);
    if (path.ends_with("/.next/cache")) return LexicalPath::parent(LexicalPath::parent(path));
    return {};
}

bool exists(const std::string& path) {
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0;
}

} // namespace

ProjectMeasure::ProjectMeasure(std::string projectPath, std::unordered_set<FileKey>& seenLinks)
    : path_(std::move(projectPath)), prefix_(path_.ends_with('/') ? path_.size() : path_.size() + 1),
      seenLinks_(seenLinks) {}

ProjectMeasure::Root* ProjectMeasure::rootAround(std::string_view path) noexcept {
    if (roots_.empty() || !StoragePaths::contains(path, roots_.back().path)) return nullptr;
    return &roots_.back();
}

void ProjectMeasure::add(const VNDiskEntry& entry, std::string_view path) {
    ++entryCount_;
    const std::string_view relative = path.substr(std::min(prefix_, path.size()));
    const StorageBucket bucket = StoragePaths::bucket(relative);
    const bool directory = entry.kind == VN_DISK_DIRECTORY;
    if (!directory && entry.links > 1 && !seenLinks_.insert({entry.device, entry.inode}).second) return;

    auto& sum = buckets_.at(static_cast<std::size_t>(bucket));
    if (!sum) sum = 0;
    addToTotal(*sum, entry.allocated);
    if (__builtin_add_overflow(logicalBytes_, entry.logical, &logicalBytes_)) {
        logicalBytes_ = std::numeric_limits<std::uint64_t>::max();
        lengthsOverflow_ = true;
    }

    const std::string_view name = LexicalPath::lastComponent(path);
    Root* root = rootAround(path);
    if (name == ".git" && relative != ".git" && root != nullptr) root->nested = true;
    if (directory && root == nullptr) {
        noteRoot(entry, path, name, bucket);
        root = rootAround(path);
    }
    if (root != nullptr) addToTotal(root->bytes, entry.allocated);
    if (bucket == StorageBucket::files && entry.kind == VN_DISK_FILE) {
        newest_ = std::max(newest_.value_or(std::numeric_limits<std::int64_t>::min()), entry.modified);
    }
}

void ProjectMeasure::noteRoot(const VNDiskEntry& entry, std::string_view path, std::string_view name,
                              StorageBucket bucket) {
    const std::string_view project = projectOf(path, name);
    if (project.empty() || !exists(std::string(project) + "/package.json")) return;
    roots_.push_back({std::string(path), bucket, {entry.device, entry.inode, entry.owner}});
}

void ProjectMeasure::leaveOut(std::string_view path) noexcept {
    if (Root* const root = rootAround(path)) root->nested = true;
}

void ProjectMeasure::writeTo(StorageProject& project) const {
    project.buckets.clear();
    for (const StorageBucket bucket : allStorageBuckets) {
        if (const auto sum = buckets_.at(static_cast<std::size_t>(bucket))) project.buckets[bucket] = *sum;
    }
    project.logicalBytes = logicalBytes_;
    project.entryCount = entryCount_;
    if (newest_) project.lastModified = Date::fromUnix(static_cast<double>(*newest_));
}

} // namespace varnet
