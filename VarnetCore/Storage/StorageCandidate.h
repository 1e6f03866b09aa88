#pragma once

#include "VarnetCore/Storage/DiskIdentity.h"
#include "VarnetCore/Storage/StorageBucket.h"

#include <cstdint>
#include <string>

namespace varnet {

/// A folder offered for review. What a scan says of it is checked anew before it moves.
struct StorageCandidate {
    std::string path;        ///< canonical, absolute
    std::string projectPath; ///< of the project that it belongs to
    StorageBucket bucket = StorageBucket::dependencies;
    std::uint64_t bytes = 0; ///< allocated
    DiskIdentity identity;   ///< when it was measured

    const std::string& id() const noexcept { return path; }
    /// As seen from its project.
    std::string relativePath() const;

    friend bool operator==(const StorageCandidate&, const StorageCandidate&) = default;
};

} // namespace varnet
