#pragma once

#include "VarnetCore/Disk/DiskIndexDatabase.h"
#include "VarnetCore/Disk/DiskIndexFolder.h"
#include "VarnetCore/Disk/DiskUsageScan.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace varnet {

/// What one scan has measured, on disk: millions of entries do not belong into memory. Any folder of it can
/// be asked for from any thread, also while the scan still writes: each question sees what was committed last
/// and waits for nobody. Goes from the disk with the object.
class DiskUsageIndex {
public:
    /// @param temporary the folder in which it makes one of its own
    static DiskIndexResult<std::shared_ptr<DiskUsageIndex>>
    make(const std::filesystem::path& temporary = DiskIndexFolder::temporary());

    /// The folder and the file in it; empty once discarded.
    const std::filesystem::path& directory() const noexcept { return folder_.path(); }
    const std::string& database() const noexcept { return database_; }

    /// Removes it from the disk. For the thread that owns it; questions after that fail.
    void discard() noexcept { folder_.remove(); }

    /// What a folder holds.
    /// @param path absolute; empty: the top, which is what all walked roots hold
    /// @return empty when the folder is not in the index
    DiskIndexResult<std::optional<DiskUsageScan>> folder(const std::optional<std::string>& path) const;

private:
    explicit DiskUsageIndex(DiskIndexFolder folder);

    DiskIndexFolder folder_;
    std::string database_;
};

} // namespace varnet
