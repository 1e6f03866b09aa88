#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace varnet::probes {

/// Where the kernel is asked. Everything below the public functions takes one, so that tests hand in a
/// fixture tree, a CPU clock and a boot time of their own.
struct KernelRoot {
    /// Nanoseconds of CPU time of a process since it began; empty when it has gone or the kernel refuses.
    using CPUClock = std::optional<std::uint64_t> (*)(std::int32_t pid);

    std::string proc = "/proc";
    std::string sys = "/sys";
    CPUClock cpuClock = nullptr;   ///< null: CPU time comes from the coarser ticks in `stat`
    std::uint64_t bootSeconds = 0; ///< seconds since 1970
    std::uint64_t ticksPerSecond = 100;

    /// The running kernel. The boot time is read once per run of the program: a clock step moves the
    /// kernel's own figure, and would give every process a new start.
    static const KernelRoot& live();

    /// Start of a process, microseconds since 1970, from its start in ticks since boot.
    std::uint64_t startMicroseconds(std::uint64_t startTicks) const noexcept {
        const std::uint64_t whole = startTicks / ticksPerSecond;
        const std::uint64_t rest = startTicks % ticksPerSecond;
        return (bootSeconds + whole) * 1'000'000 + rest * 1'000'000 / ticksPerSecond;
    }
};

} // namespace varnet::probes
