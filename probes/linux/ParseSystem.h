#pragma once

#include "probes/vn_probes.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// Parsers of the machine's own files. Pure and total.
namespace varnet::probes {

/// The first line of /proc/stat. Waiting for input or output counts as idle; interrupts and stolen time
/// count as system.
std::optional<VNCPUTicks> parseCPUTicks(std::string_view procStat) noexcept;

/// Seconds since 1970 from the "btime" line of /proc/stat.
std::optional<std::uint64_t> parseBootTime(std::string_view procStat) noexcept;

/// The last word of /proc/loadavg: the number that the kernel gave out last to a process or thread.
std::optional<std::uint64_t> parseNewestPid(std::string_view loadAverage) noexcept;

/// Bytes from /proc/meminfo; what the kernel does not tell is empty.
struct MemoryInfo {
    std::optional<std::uint64_t> swapUsed;
    std::optional<std::uint64_t> held;       ///< anonymous, shared, kernel memory that cannot be given back
    std::optional<std::uint64_t> compressed; ///< the compressed swap cache
};
MemoryInfo parseMemoryInfo(std::string_view text) noexcept;

/// Bytes that a compressed memory disk occupies, from its `mm_stat`.
std::optional<std::uint64_t> parseZramUsed(std::string_view mmStat) noexcept;

} // namespace varnet::probes
