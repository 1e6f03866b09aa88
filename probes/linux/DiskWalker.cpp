#include "probes/linux/DiskWalker.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace varnet::probes {

namespace {

constexpr std::size_t listSize = 65'536; // bytes
constexpr int openFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr int statFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT;
constexpr std::uint64_t blockSize = 512; // of st_blocks

// What getdents64 fills: a header, and the name behind it.
struct Record {
    std::uint64_t inode;
    std::int64_t offset;
    std::uint16_t length;
    std::uint8_t type;
};
constexpr std::size_t nameOffset = offsetof(Record, type) + 1;
constexpr std::uint8_t directoryType = 4;

/// The kernel's device numbers have 32 bits.
std::int32_t deviceOf(const struct stat& status) noexcept {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(status.st_dev));
}

std::uint32_t kindOf(mode_t mode) noexcept {
    if (S_ISDIR(mode)) return VN_DISK_DIRECTORY;
    if (S_ISREG(mode)) return VN_DISK_FILE;
    if (S_ISLNK(mode)) return VN_DISK_SYMLINK;
    return VN_DISK_OTHER;
}

void fill(VNDiskEntry& entry, const std::string& path, const struct stat& status) noexcept {
    entry = {};
    entry.path = path.c_str();
    entry.inode = status.st_ino;
    entry.allocated = status.st_blocks > 0 ? static_cast<std::uint64_t>(status.st_blocks) * blockSize : 0;
    const bool hasLength = !S_ISDIR(status.st_mode) && status.st_size > 0;
    entry.logical = hasLength ? static_cast<std::uint64_t>(status.st_size) : 0;
    entry.links = status.st_nlink;
    entry.modified = status.st_mtim.tv_sec;
    entry.device = deviceOf(status);
    entry.owner = status.st_uid;
    entry.kind = kindOf(status.st_mode);
}

bool isSelfOrParent(const char* name) noexcept {
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

bool isThat(int descriptor, std::int32_t device, std::uint64_t inode) noexcept {
    struct stat status{};
    return fstat(descriptor, &status) == 0 && deviceOf(status) == device && status.st_ino == inode;
}

} // namespace

DiskWalker::DiskWalker(const char* path, bool oneVolume, std::size_t budget)
    : oneVolume_(oneVolume), budget_(std::max<std::size_t>(budget, 2)), path_(path), list_(listSize) {}

DiskWalker::~DiskWalker() {
    for (const Folder& folder : folders_) {
        if (folder.descriptor >= 0) close(folder.descriptor);
    }
}

std::int32_t DiskWalker::next(VNDiskEntry& entry) {
    if (!started_) return tellStart(entry) ? 1 : 0;
    if (enterNext_) {
        enterNext_ = false;
        if (!enter()) {
            fillError(entry, errno);
            return 1;
        }
    }
    while (!folders_.empty()) {
        if (folders_.back().listing) {
            if (tellListed(entry)) return 1;
        } else if (folders_.back().nextName < names_.size()) {
            if (tellSubfolder(entry)) return 1;
        } else {
            leave();
        }
    }
    return 0;
}

bool DiskWalker::tellStart(VNDiskEntry& entry) {
    started_ = true;
    struct stat status{};
    if (fstatat(AT_FDCWD, path_.c_str(), &status, statFlags) != 0) {
        fillError(entry, errno);
        return true;
    }
    startDevice_ = deviceOf(status);
    if (S_ISDIR(status.st_mode)) {
        tellFolder(entry, status);
    } else {
        fill(entry, path_, status);
    }
    return true;
}

/// The next entry of the deepest folder that is no directory. @return false when there is none left
bool DiskWalker::tellListed(VNDiskEntry& entry) {
    Folder& folder = folders_.back();
    for (;;) {
        if (listAt_ == listEnd_) {
            const long got = syscall(SYS_getdents64, folder.descriptor, list_.data(), list_.size());
            if (got < 0 && errno == EINTR) continue;
            listAt_ = 0;
            listEnd_ = got > 0 ? static_cast<std::size_t>(got) : 0;
            if (got > 0) continue;
            folder.listing = false;
            if (got == 0) return false;
            const int error = errno;
            path_.resize(folder.pathLength);
            fillError(entry, error);
            return true;
        }
        Record record;
        std::memcpy(&record, list_.data() + listAt_, sizeof record);
        const char* const name = list_.data() + listAt_ + nameOffset;
        listAt_ += record.length;
        if (isSelfOrParent(name)) continue;
        struct stat status{};
        const bool listedAsFolder = record.type == directoryType;
        if (!listedAsFolder && fstatat(folder.descriptor, name, &status, statFlags) != 0) {
            const int error = errno;
            setPath(folder.pathLength, name);
            fillError(entry, error);
            return true;
        }
        if (listedAsFolder || S_ISDIR(status.st_mode)) {
            names_.insert(names_.end(), name, name + std::strlen(name) + 1);
            continue;
        }
        setPath(folder.pathLength, name);
        fill(entry, path_, status);
        return true;
    }
}

bool DiskWalker::tellSubfolder(VNDiskEntry& entry) {
    Folder& folder = folders_.back();
    const char* const name = names_.data() + folder.nextName;
    folder.nextName += std::strlen(name) + 1;
    setPath(folder.pathLength, name);
    struct stat status{};
    if (folder.descriptor < 0) {
        fillError(entry, ESTALE);
    } else if (fstatat(folder.descriptor, name, &status, statFlags) != 0) {
        fillError(entry, errno);
    } else if (!S_ISDIR(status.st_mode)) {
        fill(entry, path_, status); // swapped since it was listed
    } else if (enclosesItself(deviceOf(status), status.st_ino)) {
        fillError(entry, ELOOP);
    } else {
        tellFolder(entry, status);
    }
    return true;
}

void DiskWalker::tellFolder(VNDiskEntry& entry, const struct stat& status) {
    fill(entry, path_, status);
    toldDevice_ = entry.device;
    toldInode_ = entry.inode;
    enterNext_ = !oneVolume_ || toldDevice_ == startDevice_;
}

/// Goes into the directory told last. @return false with errno when that cannot be
bool DiskWalker::enter() {
    int descriptor = -1;
    if (folders_.empty()) {
        descriptor = openWithRoom(AT_FDCWD, path_.c_str());
    } else {
        const std::size_t above = folders_.back().pathLength;
        const char* const name = path_.c_str() + above + (path_[above] == '/' ? 1 : 0);
        descriptor = openWithRoom(folders_.back().descriptor, name);
    }
    if (descriptor < 0) return false;
    if (!isThat(descriptor, toldDevice_, toldInode_)) {
        close(descriptor);
        errno = ESTALE;
        return false;
    }
    folders_.push_back(
        {descriptor, toldDevice_, toldInode_, path_.size(), names_.size(), names_.size(), true});
    listAt_ = listEnd_ = 0;
    return true;
}

/// Goes back from the deepest folder to the one above it.
void DiskWalker::leave() {
    const Folder left = folders_.back();
    names_.resize(left.firstName);
    path_.resize(left.pathLength);
    folders_.pop_back();
    if (!folders_.empty() && folders_.back().descriptor < 0) reach(folders_.size() - 1, left.descriptor);
    if (left.descriptor >= 0) close(left.descriptor);
}

/// Opens again a folder whose descriptor was given up: as the parent of the one below or, should that have
/// been moved, name by name from the start. It stays closed when another folder has taken its place.
void DiskWalker::reach(std::size_t level, int below) {
    Folder& folder = folders_[level];
    firstOpen_ = std::min(firstOpen_, level);
    if (below >= 0) {
        const int parent = openat(below, "..", openFlags);
        if (parent >= 0 && isThat(parent, folder.device, folder.inode)) {
            folder.descriptor = parent;
            return;
        }
        if (parent >= 0) close(parent);
    }
    int current = folders_.front().descriptor;
    std::string name;
    for (std::size_t step = 1; step <= level && current >= 0; ++step) {
        const std::size_t above = folders_[step - 1].pathLength;
        const std::size_t begin = above + (path_[above] == '/' ? 1 : 0);
        name.assign(path_, begin, folders_[step].pathLength - begin);
        const int following = openat(current, name.c_str(), openFlags);
        if (step > 1) close(current);
        current = following;
    }
    if (current >= 0 && !isThat(current, folder.device, folder.inode)) {
        close(current);
        current = -1;
    }
    folder.descriptor = current;
}

/// Opens a directory within the budget, and within what the process may still open.
int DiskWalker::openWithRoom(int folder, const char* name) {
    if (folders_.size() >= firstOpen_ + budget_ - 1) giveUpShallowest();
    for (;;) {
        const int descriptor = openat(folder, name, openFlags);
        if (descriptor >= 0) return descriptor;
        const int error = errno;
        if (error == EINTR) continue;
        if ((error == EMFILE || error == ENFILE) && giveUpShallowest()) continue;
        errno = error;
        return -1;
    }
}

/// Closes the shallowest folder that is neither the start nor the deepest. @return false when there is none
bool DiskWalker::giveUpShallowest() {
    if (firstOpen_ + 1 >= folders_.size()) return false;
    Folder& folder = folders_[firstOpen_++];
    if (folder.descriptor >= 0) close(folder.descriptor);
    folder.descriptor = -1;
    return true;
}

bool DiskWalker::enclosesItself(std::int32_t device, std::uint64_t inode) const noexcept {
    return std::any_of(folders_.begin(), folders_.end(), [&](const Folder& folder) {
        return folder.inode == inode && folder.device == device;
    });
}

void DiskWalker::setPath(std::size_t folderLength, const char* name) {
    path_.resize(folderLength);
    if (path_.back() != '/') path_ += '/';
    path_ += name;
}

void DiskWalker::fillError(VNDiskEntry& entry, int error) const noexcept {
    entry = {};
    entry.path = path_.c_str();
    entry.kind = VN_DISK_ERROR;
    entry.error = error;
}

} // namespace varnet::probes
