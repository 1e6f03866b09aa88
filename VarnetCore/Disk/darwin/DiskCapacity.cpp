#include "VarnetCore/Disk/DiskCapacity.h"

#include "VarnetCore/Disk/DiskVolumes.h"

#include <sys/attr.h>
#include <sys/mount.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace varnet {

namespace {

/// The name that the user gave the system volume; empty without one.
std::string volumeName() {
    struct {
        std::uint32_t length; // of the whole answer
        attrreference_t name; // its place counts from here
        char text[1024];
    } answer{};
    attrlist wanted{};
    wanted.bitmapcount = ATTR_BIT_MAP_COUNT;
    wanted.volattr = ATTR_VOL_INFO | ATTR_VOL_NAME;
    if (getattrlist("/", &wanted, &answer, sizeof answer, 0) != 0) return {};
    constexpr std::size_t nameAt = offsetof(decltype(answer), name);
    const std::size_t end = std::min<std::size_t>(answer.length, sizeof answer);
    const std::int64_t begin = static_cast<std::int64_t>(nameAt) + answer.name.attr_dataoffset;
    if (begin < 0 || static_cast<std::uint64_t>(begin) >= end) return {};
    const char* const text = reinterpret_cast<const char*>(&answer) + begin;
    const auto room = end - static_cast<std::size_t>(begin);
    return {text, strnlen(text, std::min<std::size_t>(room, answer.name.attr_length))};
}

} // namespace

std::optional<DiskCapacity> DiskCapacity::read() {
    struct statfs volume{};
    if (statfs(std::string(dataVolumePath).c_str(), &volume) != 0 || volume.f_blocks == 0)
        return std::nullopt;
    DiskCapacity capacity{.name = volumeName(),
                          .total = volume.f_blocks * volume.f_bsize,
                          .free = volume.f_bavail * volume.f_bsize};
    if (capacity.name.empty()) capacity.name = "Startup disk";
    return capacity;
}

} // namespace varnet
