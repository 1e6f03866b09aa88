#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// One mounted file system.
struct Mount {
    std::string device; ///< "major:minor"
    std::string root;   ///< the folder of the file system that is mounted
    std::string point;  ///< where
    std::string type;
    std::string source; ///< a device file for one that lies on a disk

    friend bool operator==(const Mount&, const Mount&) = default;
};

/// Reads the kernel's table. Lines that are none are left out.
std::vector<Mount> parseMountTable(std::string_view text);

/// What is mounted now, as this process sees it; empty when that cannot be read.
std::vector<Mount> readMountTable();

/// Where, besides "/", local file systems that hold the user's data are mounted: on a fixed disk, not on what
/// is plugged in, fetched over the network, mounted for a container or shown a second time. Ascending.
/// @param isRemovable by "major:minor"
std::vector<std::string> furtherRoots(const std::vector<Mount>& mounts,
                                      const std::function<bool(const std::string& device)>& isRemovable);
std::vector<std::string> furtherRoots(const std::vector<Mount>& mounts);

} // namespace varnet
