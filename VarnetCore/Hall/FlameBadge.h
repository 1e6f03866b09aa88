#pragma once

#include "VarnetCore/Hall/FlameArchive.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace varnet {

/// One thing to be proud of: earned when its metric reaches its target, and kept from then on.
struct FlameBadge {
    static constexpr std::size_t count = 20;

    std::string_view id;
    std::string_view title;
    std::string_view symbol;
    std::string_view rule; ///< what earns it
    std::string_view quip; ///< what is said once it is earned
    std::string_view metric;
    double target;
    std::string_view tier; ///< "Starter", "Rare" or "Legendary"

    /// In the order in which they are shown and announced.
    static const std::array<FlameBadge, count>& all() noexcept;
    /// Null for an id that is no badge's.
    static const FlameBadge* named(std::string_view id) noexcept;
};

/// How far a badge has come, 0 to 1.
double progress(const FlameArchive& archive, const FlameBadge& badge);
bool isEarned(const FlameArchive& archive, const FlameBadge& badge);

} // namespace varnet
