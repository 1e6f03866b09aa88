#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// Parsers of a process's files. Pure and total: any bytes give a value or nothing.
namespace varnet::probes {

/// What /proc/PID/stat says.
struct ProcStat {
    std::int32_t pid = 0;
    std::string_view name; ///< a part of the parsed text; any bytes, blanks and parentheses included
    char state = '?';
    std::int32_t parent = 0;
    bool kernelThread = false;
    std::uint64_t cpuTicks = 0; ///< user plus system
    std::uint64_t threads = 0;
    std::uint64_t startTicks = 0; ///< since boot

    /// It has ended and waits for its parent to collect it. A main thread that has ended before others is
    /// not the end of the process.
    bool ended() const noexcept { return (state == 'Z' || state == 'X' || state == 'x') && threads <= 1; }
};

std::optional<ProcStat> parseProcStat(std::string_view text) noexcept;

/// What /proc/PID/status says.
struct ProcStatus {
    std::int32_t processID = 0; ///< of the thread group: differs from the file's pid for a mere thread
    std::uint32_t uid = 0;      ///< effective
    std::uint64_t memory = 0;   ///< bytes: anonymous, shared and swapped; 0 for one without memory of its own
    bool swapped = false;       ///< some of it is swapped
    std::uint64_t wakeups = 0;  ///< voluntary context switches
    bool hasUsage = false;      ///< memory and wakeups could be read
};

std::optional<ProcStatus> parseProcStatus(std::string_view text) noexcept;

/// Two page counts of /proc/PID/statm. While they stand still, so does the memory that `status` tells of a
/// process with nothing swapped.
struct ProcResident {
    std::uint64_t resident = 0;
    std::uint64_t shared = 0;

    friend bool operator==(const ProcResident&, const ProcResident&) = default;
};

std::optional<ProcResident> parseProcStatm(std::string_view text) noexcept;

/// Turns the block of /proc/PID/cmdline, a NUL after each argument, into text with a tab between arguments.
/// Leading empty arguments leave no tab. What does not fit is cut after a whole argument.
/// @param cut the block was longer than what was read of it, so its last argument may lack its end
/// @return the length written before the closing NUL; empty for a block that is no argument vector
std::optional<std::size_t> joinArguments(std::string_view block, bool cut, char* buffer,
                                         std::size_t size) noexcept;

} // namespace varnet::probes
