#pragma once

#include "VarnetCore/Base/Date.h"

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace varnet {

/// The only safe way to name a process, across reused pids and across reboots.
struct ProcessIdentity {
    std::uint64_t boot = 0;  ///< the machine's boot time, whole seconds since 1970
    std::int32_t pid = 0;    ///< process number
    std::uint64_t start = 0; ///< the process's start, microseconds since 1970

    /// "boot:pid:start" in decimal.
    std::string id() const;
    Date startedAt() const noexcept { return Date::fromUnix(static_cast<double>(start) / 1'000'000); }

    friend auto operator<=>(const ProcessIdentity&, const ProcessIdentity&) noexcept = default;
};

} // namespace varnet

template <>
struct std::hash<varnet::ProcessIdentity> {
    std::size_t operator()(const varnet::ProcessIdentity& identity) const noexcept {
        // pid and start alone tell processes of one boot apart; the multiplications spread neighbours.
        std::uint64_t h = identity.start * 0x9E3779B97F4A7C15U;
        h ^= (static_cast<std::uint64_t>(static_cast<std::uint32_t>(identity.pid)) + identity.boot) *
             0xC2B2AE3D27D4EB4FU;
        h ^= h >> 32U;
        return static_cast<std::size_t>(h);
    }
};
