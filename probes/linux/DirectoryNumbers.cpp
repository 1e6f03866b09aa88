#include "probes/linux/DirectoryNumbers.h"

#include <dirent.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstring>

namespace varnet::probes {

namespace {

// What getdents64 fills: a header and the name behind it.
struct Record {
    std::uint64_t inode;
    std::int64_t offset;
    std::uint16_t length;
    std::uint8_t type;
};
constexpr std::size_t nameOffset = offsetof(Record, type) + 1;

} // namespace

bool appendNumbers(int directory, std::vector<std::int32_t>& numbers) {
    alignas(Record) std::array<char, 32768> buffer;
    for (;;) {
        const long got = syscall(SYS_getdents64, directory, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return false;
        if (got == 0) return true;
        for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
            Record record;
            std::memcpy(&record, buffer.data() + at, sizeof record);
            const char* const name = buffer.data() + at + nameOffset;
            const char* const end = name + std::strlen(name);
            std::int32_t number = 0;
            const auto [stop, error] = std::from_chars(name, end, number);
            if (error == std::errc{} && stop == end && number >= 0) numbers.push_back(number);
            at += record.length;
        }
    }
}

} // namespace varnet::probes
