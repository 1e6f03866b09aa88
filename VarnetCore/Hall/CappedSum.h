#pragma once

#include <concepts>
#include <limits>

namespace varnet {

/// Adds two whole numbers; a sum beyond the type's range counts as the nearest number within it. Files hold
/// any number, and a counter must not wrap.
template <std::integral Number>
constexpr Number cappedSum(Number a, Number b) noexcept {
    Number sum{};
    if (!__builtin_add_overflow(a, b, &sum)) return sum;
    return b < 0 ? std::numeric_limits<Number>::min() : std::numeric_limits<Number>::max();
}

} // namespace varnet
