#include "probes/darwin/ArgumentBlock.h"
#include "probes/vn_probes.h"

#include <libproc.h>
#include <sys/sysctl.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>

namespace {

constexpr std::size_t argumentBlockSize = 262'144; // bytes

struct Free {
    void operator()(void* storage) const noexcept { std::free(storage); }
};

/// @return 0, or -1 without room
int32_t copyCut(const char* text, std::size_t length, char* buffer, size_t size) {
    if (size == 0) return -1;
    const std::size_t copied = std::min(length, size - 1);
    std::memcpy(buffer, text, copied);
    buffer[copied] = '\0';
    return 0;
}

} // namespace

int32_t vn_path(int32_t pid, char* buffer, size_t size) {
    // The kernel takes buffers of 1,024 to 4,096 bytes alone.
    std::array<char, VN_PATH_SIZE> path{};
    if (proc_pidpath(pid, path.data(), VN_PATH_SIZE) < 1) return -1;
    return copyCut(path.data(), strnlen(path.data(), path.size()), buffer, size);
}

int32_t vn_cwd(int32_t pid, char* buffer, size_t size) {
    proc_vnodepathinfo info{};
    static_assert(sizeof info == 2352);
    constexpr int expected = sizeof info;
    if (proc_pidinfo(pid, PROC_PIDVNODEPATHINFO, 0, &info, expected) != expected) return -1;
    const char* const path = info.pvi_cdir.vip_path;
    if (*path == '\0') return -1;
    return copyCut(path, strnlen(path, sizeof info.pvi_cdir.vip_path), buffer, size);
}

int32_t vn_arguments(int32_t pid, char* buffer, size_t size) {
    const std::unique_ptr<char[], Free> block(static_cast<char*>(std::calloc(argumentBlockSize, 1)));
    if (!block) return -1;
    std::array<int, 3> name{CTL_KERN, KERN_PROCARGS2, pid};
    std::size_t length = argumentBlockSize;
    if (sysctl(name.data(), name.size(), block.get(), &length, nullptr, 0) != 0) return -1;
    const std::span<const char> returned(block.get(), std::min(length, argumentBlockSize));
    return varnet::probes::joinArguments(returned, std::span(buffer, size));
}
