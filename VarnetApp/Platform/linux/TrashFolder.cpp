#include "VarnetApp/Platform/linux/TrashFolder.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <time.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace varnet::platform {

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
constexpr int heldFlags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr mode_t ownOnly = 0700;
constexpr int mostNames = 10'000; // tries for a free name

std::string cannotUse(int error) {
    return "The Trash can’t be used: " + std::generic_category().message(error) + ".";
}

std::unexpected<std::string> failedWith(int error) {
    return std::unexpected(cannotUse(error));
}

/// A directory in a folder by its name alone, never through a link.
std::optional<DiskIdentity> identityOf(const FileDescriptor& folder, const std::string& name) {
    struct stat status{};
    const bool found = fstatat(folder.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    if (!found || !S_ISDIR(status.st_mode)) return std::nullopt;
    // The kernel's device numbers have 32 bits.
    return DiskIdentity{static_cast<std::int32_t>(static_cast<std::uint32_t>(status.st_dev)), status.st_ino,
                        status.st_uid};
}

/// Which mount a descriptor lies in. Two mounts of one device are two: nothing can be renamed between them.
std::optional<std::pair<std::uint64_t, std::uint64_t>> mountOf(const FileDescriptor& file) {
    struct statx status{};
    if (statx(file.number(), "", AT_EMPTY_PATH, STATX_MNT_ID, &status) != 0) return std::nullopt;
    const std::uint64_t device = (std::uint64_t{status.stx_dev_major} << 32U) | status.stx_dev_minor;
    return std::pair(device, (status.stx_mask & STATX_MNT_ID) != 0 ? status.stx_mnt_id : 0);
}

/// Makes a folder and those around it, for this user alone.
bool makeFolders(const std::string& path) {
    for (std::size_t slash = path.find('/', 1);; slash = path.find('/', slash + 1)) {
        if (mkdir(path.substr(0, slash).c_str(), ownOnly) != 0 && errno != EEXIST) return false;
        if (slash == std::string::npos) return true;
    }
}

/// A folder of this user's in another one, made when it is not there.
FileDescriptor ownFolder(const FileDescriptor& parent, const std::string& name, int flags) {
    if (mkdirat(parent.number(), name.c_str(), ownOnly) != 0 && errno != EEXIST) return {};
    struct stat link{};
    struct stat status{};
    if (fstatat(parent.number(), name.c_str(), &link, AT_SYMLINK_NOFOLLOW) != 0) return {};
    FileDescriptor folder(openat(parent.number(), name.c_str(), flags));
    if (!folder || fstat(folder.number(), &status) != 0) return {};
    // A link of somebody else's could lead what is thrown away to where they want it.
    if (link.st_uid == getuid() && status.st_uid == getuid()) return folder;
    errno = EACCES;
    return {};
}

std::string percentEncoded(std::string_view path) {
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.~/";
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string encoded;
    for (const char character : path) {
        if (plain.find(character) != std::string_view::npos) {
            encoded += character;
            continue;
        }
        const auto byte = static_cast<unsigned char>(character);
        encoded += '%';
        encoded += digits[byte >> 4U];
        encoded += digits[byte & 15U];
    }
    return encoded;
}

std::string localTime() {
    const time_t now = time(nullptr);
    struct tm parts{};
    std::array<char, 32> text{};
    if (localtime_r(&now, &parts) == nullptr) return {};
    return {text.data(), strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &parts)};
}

/// @return 0 or the error
int writeAll(const FileDescriptor& file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(file.number(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return written < 0 ? errno : EIO;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return fsync(file.number()) == 0 ? 0 : errno;
}

/// Renames unless something has the new name. @return 0 or the error
int renameTo(const FileDescriptor& from, const std::string& name, const FileDescriptor& to,
             const std::string& newName) {
    if (renameat2(from.number(), name.c_str(), to.number(), newName.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != ENOSYS && errno != EINVAL) return errno;
    // A file system that cannot promise it: look first.
    struct stat status{};
    if (fstatat(to.number(), newName.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0) return EEXIST;
    return renameat(from.number(), name.c_str(), to.number(), newName.c_str()) == 0 ? 0 : errno;
}

} // namespace

std::expected<TrashedFolder, std::string> TrashedFolder::hold(const std::string& path,
                                                              const DiskIdentity& identity) {
    const std::size_t last = path.rfind('/');
    if (!path.starts_with('/') || last + 1 == path.size() || path.find('\0') != std::string::npos) {
        return failedWith(EINVAL);
    }
    TrashedFolder folder;
    folder.path = path;
    folder.name = path.substr(last + 1);
    folder.identity = identity;
    folder.topPath = "/";
    folder.parent = FileDescriptor(open("/", heldFlags));
    folder.top = FileDescriptor(open("/", heldFlags));
    if (!folder.parent || !folder.top) return failedWith(errno);
    auto mount = mountOf(folder.parent);
    for (std::size_t begin = 1; begin <= last;) {
        const std::size_t end = path.find('/', begin);
        const std::string part = path.substr(begin, end - begin);
        FileDescriptor next(openat(folder.parent.number(), part.c_str(), heldFlags));
        if (!next) return failedWith(errno);
        const auto here = mountOf(next);
        if (!here) return failedWith(errno);
        if (here != mount) {
            folder.top = FileDescriptor(openat(folder.parent.number(), part.c_str(), heldFlags));
            folder.topPath = path.substr(0, end);
            mount = here;
        }
        folder.parent = std::move(next);
        begin = end + 1;
    }
    if (!folder.top) return failedWith(errno);
    if (identityOf(folder.parent, folder.name) != identity) {
        return std::unexpected("The folder is not the one that was checked. Nothing was moved.");
    }
    return folder;
}

std::expected<TrashFolder, std::string> TrashFolder::ofHome(const std::string& path) {
    if (!makeFolders(path)) return failedWith(errno);
    const FileDescriptor trash(::open(path.c_str(), folderFlags));
    return open(trash, path, {});
}

std::expected<TrashFolder, std::string> TrashFolder::ofMount(const TrashedFolder& folder) {
    const std::string user = std::to_string(getuid());
    const std::string prefix = folder.topPath == "/" ? "/" : folder.topPath + '/';
    struct stat status{};
    // Without the sticky bit anybody could put their own folder in our name's place.
    const bool isShared = fstatat(folder.top.number(), ".Trash", &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                          S_ISDIR(status.st_mode) && (status.st_mode & S_ISVTX) != 0;
    if (isShared) {
        const FileDescriptor shared(openat(folder.top.number(), ".Trash", folderFlags | O_NOFOLLOW));
        if (shared) {
            const FileDescriptor trash = ownFolder(shared, user, folderFlags | O_NOFOLLOW);
            auto opened = open(trash, prefix + ".Trash/" + user, folder.topPath);
            if (opened) return opened;
        }
    }
    const std::string name = ".Trash-" + user;
    const FileDescriptor trash = ownFolder(folder.top, name, folderFlags);
    return open(trash, prefix + name, folder.topPath);
}

std::expected<TrashFolder, std::string> TrashFolder::open(const FileDescriptor& trash, std::string path,
                                                          std::string base) {
    if (!trash) return failedWith(errno);
    FileDescriptor files = ownFolder(trash, "files", folderFlags);
    if (!files) return failedWith(errno);
    FileDescriptor info = ownFolder(trash, "info", folderFlags);
    if (!info) return failedWith(errno);
    return TrashFolder(std::move(files), std::move(info), std::move(path), std::move(base));
}

std::string TrashFolder::note(const std::string& path) const {
    std::string_view shown = path;
    if (!base_.empty()) shown.remove_prefix(base_ == "/" ? 1 : base_.size() + 1);
    return "[Trash Info]\nPath=" + percentEncoded(shown) + "\nDeletionDate=" + localTime() + "\n";
}

std::expected<std::string, TrashFolder::Failure> TrashFolder::take(const TrashedFolder& folder) const {
    struct stat status{};
    if (fstat(files_.number(), &status) != 0)
        return std::unexpected(Failure{Refusal::failed, cannotUse(errno)});
    if (static_cast<std::int32_t>(static_cast<std::uint32_t>(status.st_dev)) != folder.identity.device) {
        return std::unexpected(Failure{Refusal::otherVolume, cannotUse(EXDEV)});
    }
    const std::string text = note(folder.path);
    for (int number = 1; number <= mostNames; ++number) {
        const std::string name = number == 1 ? folder.name : folder.name + '.' + std::to_string(number);
        const std::string noteName = name + ".trashinfo";
        // The note reserves the name: whoever makes it owns it.
        const FileDescriptor note(openat(info_.number(), noteName.c_str(),
                                         O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
        if (!note && errno == EEXIST) continue;
        if (!note) return std::unexpected(Failure{Refusal::failed, cannotUse(errno)});
        int error = writeAll(note, text);
        if (error == 0) error = renameTo(folder.parent, folder.name, files_, name);
        if (error == 0 && identityOf(files_, name) == folder.identity) return path_ + "/files/" + name;
        if (error == 0) {
            // Swapped in the very last moment: that one goes back.
            error = renameTo(files_, name, folder.parent, folder.name);
            if (error != 0) {
                return std::unexpected(
                    Failure{Refusal::failed, "Another folder had taken its place and is now at " + path_ +
                                                 "/files/" + name + "."});
            }
            unlinkat(info_.number(), noteName.c_str(), 0);
            return std::unexpected(
                Failure{Refusal::failed, "The folder is not the one that was checked. Nothing was moved."});
        }
        unlinkat(info_.number(), noteName.c_str(), 0);
        if (error == EEXIST || error == ENOTEMPTY) continue; // thrown away without a note
        return std::unexpected(
            Failure{error == EXDEV ? Refusal::otherVolume : Refusal::failed, cannotUse(error)});
    }
    return std::unexpected(Failure{Refusal::failed, cannotUse(EEXIST)});
}

} // namespace varnet::platform
