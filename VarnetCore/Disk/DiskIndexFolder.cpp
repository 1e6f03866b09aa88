#include "VarnetCore/Disk/DiskIndexFolder.h"

#include "VarnetCore/Base/Uuid.h"
#include "VarnetCore/Disk/TemporaryPlace.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>

namespace varnet {

namespace {

constexpr std::string_view prefix = "varnet-disk-map-";

/// A locked descriptor of a folder of this user; -1 when it is none or when somebody holds its lock.
int lockFolder(const std::filesystem::path& path) noexcept {
    const int folder = open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0) return -1;
    struct stat status{};
    const bool ours = fstat(folder, &status) == 0 && status.st_uid == geteuid();
    if (ours && flock(folder, LOCK_EX | LOCK_NB) == 0) return folder;
    close(folder);
    return -1;
}

} // namespace

std::optional<DiskIndexFolder> DiskIndexFolder::make(const std::filesystem::path& temporary) {
    std::filesystem::path path = temporary / (std::string(prefix) + Uuid::random().text());
    if (mkdir(path.c_str(), 0700) != 0) return std::nullopt;
    const int lock = lockFolder(path);
    DiskIndexFolder folder(std::move(path), lock);
    if (lock < 0) return std::nullopt; // and it goes again
    return folder;
}

DiskIndexFolder::DiskIndexFolder(DiskIndexFolder&& other) noexcept
    : path_(std::exchange(other.path_, {})), lock_(std::exchange(other.lock_, -1)) {}

DiskIndexFolder& DiskIndexFolder::operator=(DiskIndexFolder&& other) noexcept {
    if (this != &other) {
        remove();
        path_ = std::exchange(other.path_, {});
        lock_ = std::exchange(other.lock_, -1);
    }
    return *this;
}

void DiskIndexFolder::remove() noexcept {
    if (!path_.empty()) {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
        path_.clear();
    }
    if (lock_ >= 0) close(std::exchange(lock_, -1));
}

void DiskIndexFolder::removeStale(const std::filesystem::path& temporary) noexcept {
    std::error_code error;
    for (std::filesystem::directory_iterator entries(temporary, error), end; !error && entries != end;
         entries.increment(error)) {
        const std::filesystem::path& path = entries->path();
        if (!path.filename().native().starts_with(prefix)) continue;
        const int lock = lockFolder(path);
        if (lock < 0) continue;
        DiskIndexFolder(path, lock).remove();
    }
}

std::filesystem::path DiskIndexFolder::temporary() {
    if (const char* named = std::getenv("TMPDIR"); named != nullptr && *named == '/') return named;
    return temporaryPlace();
}

} // namespace varnet
