#pragma once

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// How the disk that the system starts from is put together on this machine.
struct DiskVolumes {
    /// A writable volume stands apart from the read-only system that is mounted at "/".
    bool dataVolume = false;
    /// Where the system volume leads into the data volume: the text of its table; empty when it cannot be
    /// read.
    std::optional<std::string> firmlinks;
    /// Where further local file systems with the user's data are mounted: a separate /home, subvolumes.
    /// Ascending.
    std::vector<std::string> further;

    /// What this machine has now.
    static DiskVolumes read();
};

/// A folder that a scan of the disk begins at.
struct DiskRoot {
    std::string path;
    bool systemOnly = false; ///< the whole of it is one row

    friend bool operator==(const DiskRoot&, const DiskRoot&) = default;
};

/// Where the writable volume is mounted on machines that have one.
inline constexpr std::string_view dataVolumePath = "/System/Volumes/Data";

/// The roots of a scan, in their order.
/// @param path the folder to scan; empty: the whole startup disk
std::vector<DiskRoot> diskRoots(const std::optional<std::string>& path, const DiskVolumes& volumes);

/// What the user reads for a path: that on the data volume without where this is mounted.
std::string displayPath(std::string_view path);

/// Folders of the system volume that lead elsewhere, by the text of the table that the system keeps of them.
std::set<std::string, std::less<>> systemExclusions(std::string_view firmlinks);

/// What a walk from a root leaves out; it is measured elsewhere and counts nowhere.
/// @return empty when that cannot be told, and the root must not be walked
std::optional<std::set<std::string, std::less<>>> exclusionsOf(const DiskRoot& root,
                                                               const DiskVolumes& volumes);

} // namespace varnet
