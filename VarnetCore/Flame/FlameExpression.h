#pragma once

namespace varnet {

/// The faces of the mascot.
enum class FlameExpression {
    smug,
    focused,
    sleepy,
    suspicious,
    sweating,
    melting,
    frazzled,
    panic,
    confused,
    delighted,
    wink,
    love
};

inline constexpr int flameExpressionCount = 12;

} // namespace varnet
