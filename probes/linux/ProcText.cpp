#include "probes/linux/ProcText.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace varnet::probes {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
}

Descriptor::~Descriptor() {
    if (fd_ >= 0) close(fd_);
}

std::optional<std::string_view> ProcText::read(int directory, const char* name, std::size_t limit) {
    return readUntilEnd(directory, name, limit, false);
}

std::optional<std::string_view> ProcText::readOnePiece(int directory, const char* name) {
    return readUntilEnd(directory, name, defaultLimit, true);
}

std::optional<std::string_view> ProcText::readUntilEnd(int directory, const char* name, std::size_t limit,
                                                       bool shortReadEnds) {
    const Descriptor file(openat(directory, name, O_RDONLY | O_CLOEXEC));
    if (!file.valid()) return std::nullopt;
    if (buffer_.empty()) buffer_.resize(8192);
    std::size_t length = 0;
    while (length < limit) {
        if (length == buffer_.size()) buffer_.resize(buffer_.size() * 2);
        const std::size_t room = std::min(buffer_.size(), limit) - length;
        const ssize_t got = ::read(file.get(), buffer_.data() + length, room);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return std::nullopt;
        length += static_cast<std::size_t>(got);
        if (got == 0 || (shortReadEnds && static_cast<std::size_t>(got) < room)) break;
    }
    return std::string_view(buffer_.data(), length);
}

std::ptrdiff_t readLink(int directory, const char* name, char* buffer, std::size_t size) noexcept {
    if (size == 0) {
        errno = EINVAL;
        return -1;
    }
    const ssize_t length = readlinkat(directory, name, buffer, size - 1);
    buffer[std::max<ssize_t>(length, 0)] = '\0';
    return length;
}

} // namespace varnet::probes
