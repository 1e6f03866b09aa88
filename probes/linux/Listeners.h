#pragma once

#include "probes/linux/KernelRoot.h"
#include "probes/linux/ParseSockets.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace varnet::probes {

/// All listening TCP sockets of this program's network namespace at one moment. One question to the kernel
/// answers for every process.
class Listeners {
public:
    /// Empty when the kernel tells nothing of sockets.
    static std::optional<Listeners> open(const KernelRoot& root);

    /// As vn_ports. A process in another network namespace is answered from its own table.
    std::int32_t ports(std::int32_t pid, std::uint16_t* ports, std::int32_t capacity) const;

private:
    /// Device and inode; empty when the kernel does not show it.
    using Namespace = std::optional<std::pair<std::uint64_t, std::uint64_t>>;

    struct Foreign {
        Namespace ns;
        std::vector<Listener> listeners; ///< ascending
    };

    explicit Listeners(const KernelRoot& root) : root_(root) {}

    static Namespace networkNamespace(const std::string& process);
    /// The table of a process's namespace; null when it cannot be read.
    const std::vector<Listener>* tableOf(const std::string& process) const;

    const KernelRoot& root_;
    std::vector<Listener> listeners_; ///< ascending
    Namespace ownNamespace_;
    mutable std::vector<Foreign> foreign_; ///< read once each: their text tables are what costs
};

} // namespace varnet::probes
