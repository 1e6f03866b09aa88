#pragma once

#include "VarnetCore/Flame/FlameExpression.h"
#include "VarnetCore/Flame/SustainedPresentation.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <optional>
#include <string_view>

namespace varnet {

/// What the flame in the Dock and in the tray shows.
enum class DockFlameState { calm, focused, sweating, melting, frazzled, panic, unknown };

inline constexpr int dockFlameStateCount = 7;

/// The case's own name.
std::string_view rawValue(DockFlameState state) noexcept;
/// Rank among the states; heat ranks above a fan at top speed, and -1 is unknown.
int severity(DockFlameState state) noexcept;
FlameExpression expression(DockFlameState state) noexcept;

/// Percent of the whole machine at which the flame becomes focused, and below which it stops being so.
inline constexpr double focusEnters = 35;
inline constexpr double focusStays = 25;

/// A fan reading older than this, in seconds, or from the future, says nothing.
inline constexpr double freshFanReading = 15;

/// Whether the fans' level says anything: a fresh reading with a known top speed.
bool fansCount(const MonitorSnapshot& snapshot) noexcept;

/// The state that one snapshot stands for by itself.
DockFlameState measuredFlameState(const MonitorSnapshot& snapshot) noexcept;

/// The flame's state over time. A plain value.
struct DockFlameStateMachine {
    DockFlameState state = DockFlameState::unknown;
    SustainedPresentation<DockFlameState> presentation;
    std::optional<Date> last; ///< date of the newest snapshot

    DockFlameState update(const MonitorSnapshot& snapshot);
};

} // namespace varnet
