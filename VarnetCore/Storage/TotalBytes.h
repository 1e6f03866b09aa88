#pragma once

#include <cstdint>
#include <cstdlib>

namespace varnet {

/// Adds allocated bytes. No disk holds so much that this overflows: a total that does is a fault of ours, and
/// the process stops rather than showing it.
inline void addToTotal(std::uint64_t& total, std::uint64_t bytes) noexcept {
    if (__builtin_add_overflow(total, bytes, &total)) std::abort();
}

} // namespace varnet
