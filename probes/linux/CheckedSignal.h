#pragma once

#include "probes/linux/KernelRoot.h"

#include <cstdint>

namespace varnet::probes {

/// The calls by which a signal leaves this program. Tests count and refuse them.
struct SignalCalls {
    int (*openProcess)(std::int32_t pid);      ///< a descriptor of the process, or -1 with errno
    int (*sendToProcess)(int fd, int signal);  ///< 0, or -1 with errno
    int (*kill)(std::int32_t pid, int signal); ///< for kernels without process descriptors

    static const SignalCalls& live();
};

/// As vn_signal_checked. The process is held by a descriptor from before the checks until after the signal:
/// should it end in between, its pid may go to another process, and the signal goes nowhere.
std::int32_t signalChecked(const KernelRoot& root, const SignalCalls& calls, std::int32_t pid,
                           std::uint64_t start, std::uint32_t uid, std::int32_t signal);

/// As vn_exists.
std::int32_t exists(const KernelRoot& root, const SignalCalls& calls, std::int32_t pid);

} // namespace varnet::probes
