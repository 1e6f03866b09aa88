#include "VarnetCore/Base/SmallFile.h"

#include "VarnetCore/Base/Utf8.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace varnet {
namespace {

// The kernel's files say that they are empty.
constexpr std::size_t leastExpected = 4096;

bool isRegular(const struct stat& status) noexcept {
    return S_ISREG(status.st_mode);
}

/// Everything up to the end; empty when it cannot be read or has grown past the limit.
/// @param expected bytes, what the file had when it was looked at
std::optional<std::string> readUpTo(int descriptor, std::size_t expected, std::size_t limit) {
    const std::size_t step = std::max(expected, leastExpected);
    std::string text;
    std::size_t filled = 0;
    for (;;) {
        if (filled == text.size()) text.resize(std::min(limit, filled + step) + 1);
        const ssize_t count = ::read(descriptor, text.data() + filled, text.size() - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        filled += static_cast<std::size_t>(count);
        if (filled > limit) return std::nullopt;
        if (count == 0) {
            text.resize(filled);
            return text;
        }
    }
}

} // namespace

bool mayExist(const std::filesystem::path& file) noexcept {
    std::error_code error;
    return std::filesystem::status(file, error).type() != std::filesystem::file_type::not_found;
}

std::optional<std::string> readSmallFile(const std::string& path, std::size_t limit) {
    if (path.find('\0') != std::string::npos) return std::nullopt;
    struct stat status{};
    // Looked at before it is opened: opening some devices already acts on them.
    if (::stat(path.c_str(), &status) != 0 || !isRegular(status)) return std::nullopt;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0) return std::nullopt;
    const bool readable = ::fstat(descriptor, &status) == 0 && isRegular(status) &&
                          static_cast<std::size_t>(status.st_size) <= limit;
    auto text =
        readable ? readUpTo(descriptor, static_cast<std::size_t>(status.st_size), limit) : std::nullopt;
    ::close(descriptor);
    return text;
}

std::optional<std::string> readSmallTextFile(const std::string& path, std::size_t limit) {
    auto text = readSmallFile(path, limit);
    return text && isValidUtf8(*text) ? std::move(text) : std::nullopt;
}

} // namespace varnet
