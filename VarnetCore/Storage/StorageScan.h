#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Storage/StorageFamily.h"
#include "VarnetCore/Storage/StorageLocation.h"
#include "VarnetCore/Storage/StorageProject.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace varnet {

/// What a scan has found so far. Lives in memory alone.
struct StorageScan {
    std::vector<StorageProject> projects;
    std::vector<StorageLocation> locations; ///< those that were there to be searched
    std::vector<std::string> notes;         ///< sentences for the user
    Date date;
    bool partial = false; ///< something could not be read or is still to come

    std::uint64_t bytes() const noexcept;
    std::uint64_t reviewBytes() const noexcept;
    std::size_t measuredCount() const noexcept;
    /// The largest first; equal ones by id.
    std::vector<StorageFamily> families() const;

    friend bool operator==(const StorageScan&, const StorageScan&) = default;
};

} // namespace varnet
