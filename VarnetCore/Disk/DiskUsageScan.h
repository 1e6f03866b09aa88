#pragma once

#include "VarnetCore/Base/Date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// One row of a folder on the disk map.
struct DiskUsageEntry {
    std::string path; ///< absolute; of a row that stands for many, a word that begins with "__"
    std::string name; ///< bytes as they are on disk, save that accents are composed
    bool directory = false;
    std::uint64_t bytes = 0; ///< allocated, with all that is below
    bool partial = false;    ///< something in it was not, or not yet, measured

    const std::string& id() const noexcept { return path; }

    friend bool operator==(const DiskUsageEntry&, const DiskUsageEntry&) = default;
};

/// What a scan of the disk, or a question about one of its folders, came to.
struct DiskUsageScan {
    std::vector<DiskUsageEntry> entries; ///< largest first
    std::uint64_t entriesRead = 0;
    std::int64_t unreadable = 0;     ///< things that could not be looked at
    std::int64_t skippedVolumes = 0; ///< places where another file system begins
    bool complete = false;
    bool stopped = false;
    std::optional<std::string> failure; ///< a sentence for the user
    Date date;

    /// Of all entries; never more than the largest value.
    std::uint64_t bytes() const noexcept;

    friend bool operator==(const DiskUsageScan&, const DiskUsageScan&) = default;
};

/// The row that stands for what one view cannot hold.
inline constexpr const char* otherFilesPath = "__other_files__";

/// Rows that one folder shows at most; the rest is one more row.
inline constexpr std::size_t mostDiskRows = 20'000;

} // namespace varnet
