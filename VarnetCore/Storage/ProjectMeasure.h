#pragma once

#include "VarnetCore/Storage/DiskIdentity.h"
#include "VarnetCore/Storage/FileKey.h"
#include "VarnetCore/Storage/StorageBucket.h"
#include "VarnetCore/Storage/StorageProject.h"
#include "probes/vn_probes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace varnet {

/// Adds up one project as the walk goes through it: its totals, and the folders in it that may be offered for
/// review. Expects the walk's order, a directory before what is in it and whole before the next.
class ProjectMeasure {
public:
    /// A dependency or cache folder beside a package.json; none lies in another.
    struct Root {
        std::string path;
        StorageBucket bucket;
        DiskIdentity identity;
        std::uint64_t bytes = 0; ///< allocated, of all below it
        bool nested = false;     ///< somebody's work lies in it: Git data or a project of its own
    };

    /// @param projectPath canonical, absolute
    /// @param seenLinks files with several names that the scan has already counted; outlives this
    ProjectMeasure(std::string projectPath, std::unordered_set<FileKey>& seenLinks);

    /// @param entry of the project, not an error
    void add(const VNDiskEntry& entry, std::string_view path);
    /// A project of its own that the walk leaves out.
    void leaveOut(std::string_view path) noexcept;

    /// Writes the totals so far.
    void writeTo(StorageProject& project) const;
    const std::vector<Root>& roots() const noexcept { return roots_; }
    /// More bytes of file lengths than can be told: sparse files that claim any length.
    bool lengthsOverflow() const noexcept { return lengthsOverflow_; }

private:
    Root* rootAround(std::string_view path) noexcept;
    void noteRoot(const VNDiskEntry& entry, std::string_view path, std::string_view name,
                  StorageBucket bucket);

    const std::string path_;
    const std::size_t prefix_; ///< length of what a path has before its relative part
    std::unordered_set<FileKey>& seenLinks_;
    std::array<std::optional<std::uint64_t>, allStorageBuckets.size()> buckets_;
    std::uint64_t logicalBytes_ = 0;
    std::uint64_t entryCount_ = 0;
    bool lengthsOverflow_ = false;
    std::optional<std::int64_t> newest_; ///< seconds since 1970
    std::vector<Root> roots_;            ///< in the walk's order: only the last can be around an entry
};

} // namespace varnet
