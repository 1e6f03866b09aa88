#pragma once

#include <string>

namespace varnet::probes {

/// Where the kernel's file systems are mounted. Tests hand in a fixture tree.
struct KernelRoot {
    std::string proc = "/proc";
    std::string sys = "/sys";

    /// The running kernel.
    static const KernelRoot& live();
};

} // namespace varnet::probes
