#pragma once

#include "VarnetCore/Disk/DiskUsageScan.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace varnet {

/// The rows right below the roots of a scan, as they grow. However many things a root holds, they stay few:
/// those beyond 20,000 are one row.
class TopLevelRows {
public:
    /// What follows is of this root.
    void startRoot(std::string_view path, bool systemOnly);

    /// Counts something that lies below the root.
    /// @param path of it
    /// @param directory whether a row of its own stands for a folder
    void add(std::string_view path, bool directory, std::uint64_t bytes, bool unreadable);

    /// A row as it is, in place of one with its path.
    void put(DiskUsageEntry entry);

    /// The row that was counted into last has not all that belongs to it.
    void markCurrentPartial();
    void markPartial(); ///< none has

    /// Largest first; those of one size by path.
    std::vector<DiskUsageEntry> sorted() const;

private:
    DiskUsageEntry& rowOf(std::string_view first, bool directory);

    std::unordered_map<std::string, DiskUsageEntry> rows_; ///< nodes stay where they are
    std::string root_;
    bool systemOnly_ = false;
    std::string currentFirst_; ///< component below the root that was counted into last
    DiskUsageEntry* current_ = nullptr;
};

} // namespace varnet
