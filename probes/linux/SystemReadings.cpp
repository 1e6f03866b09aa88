#include "probes/linux/SystemReadings.h"

#include "probes/linux/ParseSystem.h"
#include "probes/linux/ProcText.h"

#include <dirent.h>
#include <fcntl.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace varnet::probes {

namespace {

constexpr std::size_t smallFile = 4096;

/// Bytes that compressed memory disks occupy: 0 without any; empty when one of them cannot be read.
std::optional<std::uint64_t> zramUsed(const KernelRoot& root) {
    const std::string blocks = root.sys + "/block";
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(blocks.c_str()), closedir);
    std::uint64_t sum = 0;
    if (!folder) return sum;
    ProcText text;
    while (const dirent* const entry = readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (!name.starts_with("zram")) continue;
        const auto mmStat =
            text.read(AT_FDCWD, (blocks + "/" + entry->d_name + "/mm_stat").c_str(), smallFile);
        const auto used = mmStat ? parseZramUsed(*mmStat) : std::nullopt;
        if (!used || __builtin_add_overflow(sum, *used, &sum)) return std::nullopt;
    }
    return sum;
}

/// The compressed swap cache of a kernel that does not list it: known to be nothing only when it is off.
std::optional<std::uint64_t> unlistedSwapCache(const KernelRoot& root) {
    ProcText text;
    const auto enabled =
        text.read(AT_FDCWD, (root.sys + "/module/zswap/parameters/enabled").c_str(), smallFile);
    if (enabled && enabled->starts_with('Y')) return std::nullopt;
    return 0;
}

} // namespace

std::int32_t cpuTicks(const KernelRoot& root, VNCPUTicks* ticks) {
    ProcText text;
    const auto stat = text.read(AT_FDCWD, (root.proc + "/stat").c_str());
    const auto parsed = stat ? parseCPUTicks(*stat) : std::nullopt;
    if (!parsed) return -1;
    *ticks = *parsed;
    return 0;
}

void systemMemory(const KernelRoot& root, VNSystemMemory* memory) {
    *memory = {};
    ProcText text;
    const auto meminfo = text.read(AT_FDCWD, (root.proc + "/meminfo").c_str());
    if (!meminfo) return;
    const MemoryInfo info = parseMemoryInfo(*meminfo);
    if (info.swapUsed) {
        memory->swapUsed = *info.swapUsed;
        memory->hasSwap = 1;
    }
    const auto cache = info.compressed ? info.compressed : unlistedSwapCache(root);
    const auto disks = zramUsed(root);
    if (!cache || !disks || __builtin_add_overflow(*cache, *disks, &memory->compressed)) return;
    memory->hasCompressed = 1;
    // The compressed pool is memory in use that no other figure contains.
    if (!info.held || __builtin_add_overflow(*info.held, memory->compressed, &memory->used)) return;
    memory->hasUsed = 1;
}

std::int32_t model(const KernelRoot& root, char* buffer, std::size_t size) {
    if (size == 0) return -1;
    buffer[0] = '\0';
    ProcText text;
    for (const char* const file : {"/class/dmi/id/product_name", "/firmware/devicetree/base/model"}) {
        auto name = text.read(AT_FDCWD, (root.sys + file).c_str(), smallFile);
        if (!name) continue;
        constexpr std::string_view blank(" \t\r\n\0", 5);
        const std::size_t begin = std::min(name->find_first_not_of(blank), name->size());
        name->remove_prefix(begin);
        *name = name->substr(0, std::min(name->find_last_not_of(blank) + 1, size - 1));
        if (name->empty()) continue;
        std::ranges::copy(*name, buffer);
        buffer[name->size()] = '\0';
        return 0;
    }
    return -1;
}

} // namespace varnet::probes
