#pragma once

#include "VarnetCore/Storage/StorageBucket.h"
#include "VarnetCore/Storage/StorageProject.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace varnet {

/// Projects that are one code base: checkouts of one repository, or worktrees of one container.
struct StorageFamily {
    std::string id; ///< the container's path, else the repository's, else the only member's
    std::vector<StorageProject> members;

    /// Of the first member that is not itself the container.
    std::string name() const;
    std::uint64_t bytes() const noexcept;
    std::uint64_t reviewBytes() const noexcept;
    bool partial() const noexcept; ///< some member is
    std::size_t worktreeCount() const noexcept;
    StorageBuckets buckets() const;
    std::string sources() const; ///< each once, in ascending order, joined by " · "

    friend bool operator==(const StorageFamily&, const StorageFamily&) = default;
};

} // namespace varnet
