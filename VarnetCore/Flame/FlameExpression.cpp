#include "VarnetCore/Flame/FlameExpression.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace varnet {

namespace {

constexpr std::array<std::string_view, 6> moodNames{"calm", "busy", "warm", "takeoff", "unknown", "relieved"};
constexpr std::array<std::string_view, flameExpressionCount> expressionNames{
    "smug",     "focused", "sleepy",   "suspicious", "sweating", "melting",
    "frazzled", "panic",   "confused", "delighted",  "wink",     "love"};

} // namespace

std::string_view rawValue(MascotMood mood) noexcept {
    return moodNames[static_cast<std::size_t>(mood)];
}

std::string_view rawValue(FlameExpression expression) noexcept {
    return expressionNames[static_cast<std::size_t>(expression)];
}

std::optional<FlameExpression> flameExpression(std::string_view name) noexcept {
    const auto found = std::ranges::find(expressionNames, name);
    if (found == expressionNames.end()) return std::nullopt;
    return static_cast<FlameExpression>(found - expressionNames.begin());
}

FlameExpression FlameFace::state(MascotMood mood, std::string_view topic) noexcept {
    if (topic == "forgotten") return FlameExpression::sleepy;
    if (topic == "duplicate") return FlameExpression::suspicious;
    if (topic == "thermal") return FlameExpression::melting;
    if (topic == "vacuum") return FlameExpression::frazzled;
    switch (mood) {
    case MascotMood::calm:
        return FlameExpression::smug;
    case MascotMood::busy:
        return FlameExpression::focused;
    case MascotMood::warm:
        return FlameExpression::sweating;
    case MascotMood::takeoff:
        return FlameExpression::panic;
    case MascotMood::unknown:
        return FlameExpression::confused;
    case MascotMood::relieved:
        return FlameExpression::delighted;
    }
    return FlameExpression::confused;
}

} // namespace varnet
