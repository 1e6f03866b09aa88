#include "probes/vn_probes.h"

#include <fts.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <new>

// Fits what the kernel tells in one step, and 64 bytes exactly: a walk of millions of entries copies it.
static_assert(sizeof(VNDiskEntry) == 64);

struct VNDiskWalk {
    FTS* hierarchy;
    FTSENT* told; ///< last; null before the first and after the end
};

namespace {

constexpr int physical = FTS_PHYSICAL | FTS_NOCHDIR;
static_assert(physical == 20 && (physical | FTS_XDEV) == 84);
constexpr int64_t blockSize = 512; // bytes, whatever the file system's own

/// Subdirectories after everything else that is in their folder.
int foldersLast(const FTSENT** one, const FTSENT** other) {
    return static_cast<int>((*one)->fts_info == FTS_D) - static_cast<int>((*other)->fts_info == FTS_D);
}

uint32_t kindOf(const FTSENT& entry) {
    switch (entry.fts_info) {
    case FTS_D:
        return VN_DISK_DIRECTORY;
    case FTS_F:
        return VN_DISK_FILE;
    case FTS_SL:
    case FTS_SLNONE:
        return VN_DISK_SYMLINK;
    case FTS_DC:
    case FTS_DNR:
    case FTS_ERR:
    case FTS_NS:
        return VN_DISK_ERROR;
    default:
        return VN_DISK_OTHER;
    }
}

void fill(VNDiskEntry& entry, const FTSENT& told) {
    entry = {};
    entry.path = told.fts_path;
    entry.kind = kindOf(told);
    if (entry.kind == VN_DISK_ERROR) {
        entry.error = told.fts_errno;
        return;
    }
    if (told.fts_statp == nullptr) return;
    const struct stat& status = *told.fts_statp;
    entry.inode = status.st_ino;
    entry.allocated = static_cast<uint64_t>(std::max<int64_t>(status.st_blocks, 0) * blockSize);
    if (entry.kind != VN_DISK_DIRECTORY)
        entry.logical = static_cast<uint64_t>(std::max<int64_t>(status.st_size, 0));
    entry.links = status.st_nlink;
    entry.modified = status.st_mtime;
    entry.device = static_cast<int32_t>(status.st_dev);
    entry.owner = status.st_uid;
}

VNDiskWalk* openWalk(const char* path, int options) {
    if (path == nullptr || *path == '\0') return nullptr;
    char* const paths[] = {const_cast<char*>(path), nullptr}; // copied, never written
    FTS* const hierarchy = fts_open(paths, options, foldersLast);
    if (hierarchy == nullptr) return nullptr;
    auto* const walk = new (std::nothrow) VNDiskWalk{hierarchy, nullptr};
    if (walk == nullptr) fts_close(hierarchy);
    return walk;
}

} // namespace

VNDiskWalk* vn_disk_open(const char* path) {
    return openWalk(path, physical);
}

VNDiskWalk* vn_disk_open_volume(const char* path) {
    return openWalk(path, physical | FTS_XDEV);
}

int32_t vn_disk_next(VNDiskWalk* walk, VNDiskEntry* entry) {
    if (walk == nullptr || entry == nullptr) return -1;
    do {
        errno = 0;
        walk->told = fts_read(walk->hierarchy);
        if (walk->told == nullptr) return errno == 0 ? 0 : -1;
    } while (walk->told->fts_info == FTS_DP);
    fill(*entry, *walk->told);
    return 1;
}

void vn_disk_skip(VNDiskWalk* walk) {
    if (walk != nullptr && walk->told != nullptr) fts_set(walk->hierarchy, walk->told, FTS_SKIP);
}

void vn_disk_close(VNDiskWalk* walk) {
    if (walk == nullptr) return;
    fts_close(walk->hierarchy);
    delete walk;
}
