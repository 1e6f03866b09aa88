#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>

namespace varnet {

/// What a part of a project's disk space is for. The raw value is what the user reads.
enum class StorageBucket {
    dependencies, ///< below a folder "node_modules"
    caches,       ///< below ".turbo" or ".next/cache"
    git,          ///< below ".git"
    files,        ///< everything else
};

/// In the order in which they are shown.
inline constexpr std::array allStorageBuckets{StorageBucket::dependencies, StorageBucket::caches,
                                              StorageBucket::git, StorageBucket::files};

std::string_view rawValue(StorageBucket bucket) noexcept;

/// Allocated bytes; a bucket of which nothing was found has no entry.
using StorageBuckets = std::map<StorageBucket, std::uint64_t>;

} // namespace varnet
