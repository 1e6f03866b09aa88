#include "VarnetCore/Flame/DockFlameState.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace varnet {

namespace {

struct Fact {
    std::string_view name;
    int severity;
    FlameExpression expression;
};

constexpr std::array<Fact, dockFlameStateCount> facts{{
    {"calm", 0, FlameExpression::smug},
    {"focused", 1, FlameExpression::focused},
    {"sweating", 2, FlameExpression::sweating},
    {"melting", 5, FlameExpression::melting},
    {"frazzled", 3, FlameExpression::frazzled},
    {"panic", 4, FlameExpression::panic},
    {"unknown", -1, FlameExpression::confused},
}};

const Fact& factOf(DockFlameState state) noexcept {
    return facts[static_cast<std::size_t>(state)];
}

/// A fan's share of its top speed is known only with a sensible top speed.
bool hasKnownShare(const FanSnapshot& fans) noexcept {
    return std::ranges::any_of(fans.fans, [](const Fan& fan) { return fan.ratio().has_value(); });
}

} // namespace

std::string_view rawValue(DockFlameState state) noexcept {
    return factOf(state).name;
}

int severity(DockFlameState state) noexcept {
    return factOf(state).severity;
}

FlameExpression expression(DockFlameState state) noexcept {
    return factOf(state).expression;
}

bool fansCount(const MonitorSnapshot& snapshot) noexcept {
    const FanSnapshot& fans = snapshot.fans;
    if (fans.availability != FanAvailability::available || !fans.measuredAt) return false;
    const double age = snapshot.date - *fans.measuredAt;
    return age >= 0 && age <= freshFanReading && hasKnownShare(fans);
}

DockFlameState measuredFlameState(const MonitorSnapshot& snapshot) noexcept {
    if (snapshot.error) return DockFlameState::unknown;
    const std::optional<double> cpu = snapshot.systemCPU;
    if (!cpu || !std::isfinite(*cpu) || *cpu < 0 || *cpu > 100) return DockFlameState::unknown;
    if (snapshot.thermal == Thermal::serious || snapshot.thermal == Thermal::critical)
        return DockFlameState::melting;
    if (fansCount(snapshot)) {
        if (snapshot.fans.level == FanLevel::vacuum) return DockFlameState::frazzled;
        if (snapshot.fans.level == FanLevel::takeoff) return DockFlameState::panic;
    }
    if (snapshot.thermal == Thermal::fair) return DockFlameState::sweating;
    return *cpu >= focusEnters ? DockFlameState::focused : DockFlameState::calm;
}

DockFlameState DockFlameStateMachine::update(const MonitorSnapshot& snapshot) {
    const DockFlameState measured = measuredFlameState(snapshot);
    if (last && snapshot.date - *last > FlameTiming::maximumSampleGap) state = DockFlameState::unknown;
    last = last ? std::max(*last, snapshot.date) : snapshot.date;
    const bool staysFocused = state == DockFlameState::focused && measured == DockFlameState::calm &&
                              snapshot.systemCPU.value_or(0) >= focusStays;
    const DockFlameState wanted = staysFocused ? DockFlameState::focused : measured;
    state = presentation.update(wanted, severity(wanted), snapshot.date);
    return state;
}

} // namespace varnet
