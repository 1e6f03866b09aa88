#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace varnet {

/// Which directory stands at a path: what tells it from another one that has taken its name.
struct DiskIdentity {
    std::int32_t device = 0;
    std::uint64_t inode = 0;
    std::uint32_t owner = 0; ///< user

    /// Of the directory at a path; empty for anything else there, a symbolic link to one included.
    static std::optional<DiskIdentity> read(const std::string& path);

    friend bool operator==(const DiskIdentity&, const DiskIdentity&) = default;
};

} // namespace varnet
