#include "VarnetCore/Base/AtomicFile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

namespace varnet::AtomicFile {

namespace {

class File {
public:
    explicit File(int fd) noexcept : fd_(fd) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() { close(); }

    int get() const noexcept { return fd_; }
    /// Closing can be the first to tell of a failed write.
    bool close() noexcept { return fd_ < 0 || ::close(std::exchange(fd_, -1)) == 0; }

private:
    int fd_;
};

std::string systemWords(int error) {
    return std::system_category().message(error);
}

bool writeAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

std::optional<std::string> makePrivateFolder(const std::filesystem::path& folder) {
    std::filesystem::path made;
    for (const auto& piece : folder) {
        made /= piece;
        if (mkdir(made.c_str(), 0700) != 0 && errno != EEXIST) {
            const int error = errno;
            struct stat info{};
            // A folder above may be one that cannot be written to and need not be made.
            if (stat(made.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) return systemWords(error);
        }
    }
    struct stat info{};
    if (stat(folder.c_str(), &info) != 0) return systemWords(errno);
    if (!S_ISDIR(info.st_mode)) return systemWords(ENOTDIR);
    if ((info.st_mode & 07777) != 0700 && chmod(folder.c_str(), 0700) != 0) return systemWords(errno);
    return std::nullopt;
}

std::optional<std::string> write(const std::filesystem::path& file, std::string_view bytes) {
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : ".";
    std::string temporary = (folder / "varnet-XXXXXX").string();
    File out(mkostemp(temporary.data(), O_CLOEXEC)); // made with mode 0600
    if (out.get() < 0) return systemWords(errno);
    const bool renamed = writeAll(out.get(), bytes) && fchmod(out.get(), 0600) == 0 &&
                         fsync(out.get()) == 0 && out.close() && rename(temporary.c_str(), file.c_str()) == 0;
    if (!renamed) {
        const int error = errno;
        unlink(temporary.c_str());
        return systemWords(error);
    }
    // The new name itself must outlive a power cut. The contents are safe either way, so a file system that
    // cannot flush a folder is no failure.
    const File directory(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.get() >= 0) fsync(directory.get());
    return std::nullopt;
}

std::optional<std::string> copy(const std::filesystem::path& from, const std::filesystem::path& to) {
    constexpr auto ownerOnly = std::filesystem::perms::owner_read | std::filesystem::perms::owner_write;
    std::error_code error;
    std::filesystem::copy_file(from, to, error);
    if (!error) std::filesystem::permissions(to, ownerOnly, error);
    if (!error) return std::nullopt;
    std::error_code ignored;
    std::filesystem::remove(to, ignored); // half a copy is none
    return error.message();
}

} // namespace varnet::AtomicFile
