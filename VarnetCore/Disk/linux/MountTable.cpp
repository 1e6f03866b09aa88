#include "VarnetCore/Disk/linux/MountTable.h"

#include "VarnetCore/Base/SmallFile.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <utility>

namespace varnet {

namespace {

/// File systems that lie on a disk of this machine and may hold what people make.
constexpr std::array diskTypes{"ext2", "ext3", "ext4",     "xfs",    "btrfs",   "f2fs",
                               "jfs",  "zfs",  "bcachefs", "nilfs2", "reiserfs"};

/// Places of what is plugged in, of containers and of packages that are mounted to be run.
constexpr std::array foreignPlaces{"/media",
                                   "/run",
                                   "/mnt",
                                   "/proc",
                                   "/sys",
                                   "/dev",
                                   "/snap",
                                   "/var/lib/docker",
                                   "/var/lib/containers",
                                   "/var/lib/snapd",
                                   "/var/lib/lxc",
                                   "/var/lib/machines",
                                   "/var/lib/kubelet",
                                   "/boot"};

bool liesBelow(std::string_view path, std::string_view folder) {
    if (folder == "/") return true;
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// The table writes blanks and the like as three octal digits.
std::string unescaped(std::string_view text) {
    const auto isOctal = [](char digit) { return digit >= '0' && digit <= '7'; };
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\\' && at + 3 < text.size() && isOctal(text[at + 1]) && isOctal(text[at + 2]) &&
            isOctal(text[at + 3])) {
            result += static_cast<char>((text[at + 1] - '0') * 64 + (text[at + 2] - '0') * 8 +
                                        (text[at + 3] - '0'));
            at += 3;
        } else {
            result += text[at];
        }
    }
    return result;
}

/// The table puts one blank between two fields, and any other white space may be part of a name.
std::vector<std::string_view> fieldsOf(std::string_view line) {
    std::vector<std::string_view> fields;
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find(' ', begin), line.size());
        fields.push_back(line.substr(begin, end - begin));
        begin = end + 1;
    }
    return fields;
}

/// "36 35 98:0 /root /point options [tags…] - type source options"
std::optional<Mount> parseLine(std::string_view line) {
    const std::vector<std::string_view> fields = fieldsOf(line);
    if (fields.size() < 9) return std::nullopt;
    const auto dash = std::find(fields.begin() + 6, fields.end(), "-");
    if (std::distance(dash, fields.end()) < 3) return std::nullopt;
    return Mount{std::string(fields[2]), unescaped(fields[3]), unescaped(fields[4]), std::string(dash[1]),
                 unescaped(dash[2])};
}

bool holdsData(const Mount& mount) {
    if (std::ranges::find(diskTypes, mount.type) == diskTypes.end()) return false;
    if (mount.type != "zfs" && !mount.source.starts_with("/dev/")) return false;
    return std::ranges::none_of(foreignPlaces,
                                [&](const char* place) { return liesBelow(mount.point, place); });
}

bool removableByKernel(const std::string& device) {
    // A partition says it of the disk that it is part of.
    for (const char* place : {"/removable", "/../removable"})
        if (const auto text = readSmallFile("/sys/dev/block/" + device + place, 64))
            return text->starts_with('1');
    return false;
}

} // namespace

std::vector<Mount> parseMountTable(std::string_view text) {
    std::vector<Mount> mounts;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (auto mount = parseLine(line)) mounts.push_back(std::move(*mount));
    }
    return mounts;
}

std::vector<Mount> readMountTable() {
    // Larger than any small file where containers are run by the hundred.
    std::ifstream file("/proc/self/mountinfo");
    std::ostringstream text;
    text << file.rdbuf();
    return parseMountTable(text.str());
}

std::vector<std::string> furtherRoots(const std::vector<Mount>& mounts,
                                      const std::function<bool(const std::string& device)>& isRemovable) {
    // What was mounted over something hides it: of several at one place the last is what is seen.
    std::vector<const Mount*> seen;
    for (const Mount& mount : mounts) {
        std::erase_if(seen, [&](const Mount* earlier) { return earlier->point == mount.point; });
        seen.push_back(&mount);
    }
    // The shortest way to a folder is the one that is kept.
    std::ranges::stable_sort(seen, {}, [](const Mount* mount) { return mount->point.size(); });
    std::vector<const Mount*> kept;
    std::vector<std::string> roots;
    for (const Mount* mount : seen) {
        const bool first = mount->point == "/";
        if (!first && (!holdsData(*mount) || isRemovable(mount->device))) continue;
        // Shown a second time: what is mounted here is part of, or encloses, what is there already.
        // Subvolumes have roots of their own.
        const bool again = std::ranges::any_of(kept, [&](const Mount* other) {
            const bool same = other->device == mount->device && other->source == mount->source;
            return same && (liesBelow(mount->root, other->root) || liesBelow(other->root, mount->root));
        });
        if (again) continue;
        kept.push_back(mount);
        if (!first) roots.push_back(mount->point);
    }
    std::ranges::sort(roots);
    return roots;
}

std::vector<std::string> furtherRoots(const std::vector<Mount>& mounts) {
    return furtherRoots(mounts, removableByKernel);
}

} // namespace varnet
