#pragma once

#include <optional>
#include <string_view>

namespace varnet {

/// How the flame feels about what it sees; every line it says carries one.
enum class MascotMood { calm, busy, warm, takeoff, unknown, relieved };

/// The case's own name.
std::string_view rawValue(MascotMood mood) noexcept;

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
    love,
};

inline constexpr int flameExpressionCount = 12;

/// The case's own name.
std::string_view rawValue(FlameExpression expression) noexcept;
/// Empty for a name that is no expression's.
std::optional<FlameExpression> flameExpression(std::string_view name) noexcept;

namespace FlameFace {

/// The face for a line: some topics have a face of their own, all others go by mood.
/// @param topic empty: none
FlameExpression state(MascotMood mood, std::string_view topic) noexcept;

} // namespace FlameFace
} // namespace varnet
