#pragma once

#include <cstdint>
#include <optional>

namespace varnet {

/// The machine's memory in bytes; an empty field is not known.
struct SystemMemorySnapshot {
    std::optional<std::uint64_t> usedRAM;
    std::optional<std::uint64_t> compressed;
    std::optional<std::uint64_t> swapUsed;

    /// Used memory plus used swap; empty when either is not known or the sum exceeds 64 bits.
    std::optional<std::uint64_t> ramAndSwap() const noexcept;

    friend bool operator==(const SystemMemorySnapshot&, const SystemMemorySnapshot&) = default;
};

} // namespace varnet
