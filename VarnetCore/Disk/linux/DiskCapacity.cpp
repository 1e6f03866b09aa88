#include "VarnetCore/Disk/DiskCapacity.h"

#include "VarnetCore/Disk/DiskVolumes.h"
#include "VarnetCore/Disk/linux/MountTable.h"

#include <sys/statvfs.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>

namespace varnet {

namespace {

/// The file systems of subvolumes have one size: it belongs to the disk below them.
std::string diskOf(const std::string& point, const std::vector<Mount>& mounts) {
    const auto last = std::find_if(mounts.rbegin(), mounts.rend(),
                                   [&](const Mount& mount) { return mount.point == point; });
    return last == mounts.rend() ? point : last->source;
}

/// The name that the user gave the file system; empty without one.
std::string labelOf(const std::string& source) {
    std::error_code error;
    const std::filesystem::path device = std::filesystem::canonical(source, error);
    if (error) return {};
    for (std::filesystem::directory_iterator links("/dev/disk/by-label", error), end; !error && links != end;
         links.increment(error)) {
        std::error_code broken;
        if (std::filesystem::canonical(links->path(), broken) == device && !broken)
            return links->path().filename().string();
    }
    return {};
}

} // namespace

std::optional<DiskCapacity> DiskCapacity::read() {
    const std::vector<Mount> mounts = readMountTable();
    DiskCapacity capacity;
    std::set<std::string> counted;
    bool first = true;
    for (const DiskRoot& root : diskRoots(std::nullopt, DiskVolumes::read())) {
        if (root.systemOnly) continue;
        struct statvfs volume{};
        const std::string disk = diskOf(root.path, mounts);
        if (first) capacity.name = labelOf(diskOf("/", mounts));
        const bool answered = statvfs(root.path.c_str(), &volume) == 0 && volume.f_blocks > 0;
        if (!answered && first) return std::nullopt;
        first = false;
        if (!answered || !counted.insert(disk).second) continue;
        capacity.total += volume.f_blocks * volume.f_frsize;
        capacity.free += volume.f_bavail * volume.f_frsize;
    }
    if (capacity.name.empty()) capacity.name = "Startup disk";
    return capacity;
}

} // namespace varnet
