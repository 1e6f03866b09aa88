#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace varnet::probes {

/// A descriptor that closes itself. -1: none.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) noexcept : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(other.fd_) { other.fd_ = -1; }
    Descriptor& operator=(Descriptor&& other) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    int get() const noexcept { return fd_; }
    bool valid() const noexcept { return fd_ >= 0; }

private:
    int fd_;
};

/// Reads the kernel's text files into one buffer that grows once and is used again and again.
class ProcText {
public:
    /// The kernel's files have no size of their own; more than this is never asked for.
    static constexpr std::size_t defaultLimit = std::size_t{4} << 20U;

    /// Reads a file up to its end or the limit. @param directory descriptor, or AT_FDCWD
    /// @return the text, valid until the next read; empty with errno set when the file cannot be read
    std::optional<std::string_view> read(int directory, const char* name, std::size_t limit = defaultLimit);

    /// The same for files that the kernel writes in one piece (a process's `stat` and `status`): a short read
    /// is the end, which saves the call that would say so.
    std::optional<std::string_view> readOnePiece(int directory, const char* name);

private:
    std::optional<std::string_view> readUntilEnd(int directory, const char* name, std::size_t limit,
                                                 bool shortReadEnds);

    std::vector<char> buffer_;
};

/// Target of a symbolic link, written into the buffer with a NUL and cut to its size.
/// @return its length without the NUL, or -1 with errno set
std::ptrdiff_t readLink(int directory, const char* name, char* buffer, std::size_t size) noexcept;

} // namespace varnet::probes
