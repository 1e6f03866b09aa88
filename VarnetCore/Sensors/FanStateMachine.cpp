#include "VarnetCore/Sensors/FanStateMachine.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace varnet {

namespace {

bool isSpeed(const Fan& fan) noexcept {
    return std::isfinite(fan.rpm) && fan.rpm >= 0 && fan.rpm <= Fan::fastest;
}

std::optional<double> largestRatio(const std::vector<Fan>& fans) {
    std::optional<double> largest;
    for (const Fan& fan : fans)
        if (const auto ratio = fan.ratio()) largest = std::max(largest.value_or(0), *ratio);
    return largest;
}

FanSnapshot untrusted(FanAvailability availability) {
    FanSnapshot snapshot;
    snapshot.availability = availability;
    return snapshot;
}

} // namespace

FanSnapshot FanStateMachine::update(std::vector<Fan> fans, FanAvailability availability, Date now) {
    if (availability != FanAvailability::available) {
        reset();
        return untrusted(availability);
    }
    if (fans.empty() || !std::ranges::all_of(fans, isSpeed)) {
        reset();
        return untrusted(FanAvailability::unavailable);
    }
    if (lastDate && now - *lastDate > maximumGap) reset();
    lastDate = now;
    const bool turning = std::ranges::any_of(fans, [](const Fan& fan) { return fan.rpm > 0; });
    const bool spunUp = watchSpinUp(turning, now);
    chooseLevel(turning ? FanLevel::running : FanLevel::stopped, largestRatio(fans), now);
    return {FanAvailability::available, std::move(fans), level, spunUp, now};
}

/// @return whether the fans have just proved to have come back
bool FanStateMachine::watchSpinUp(bool turning, Date now) {
    if (!turning) {
        hadZero = true;
        positiveSince.reset();
        return false;
    }
    if (!hadZero) return false;
    if (!positiveSince) positiveSince = now;
    if (now - *positiveSince < spinUp) return false;
    hadZero = false;
    positiveSince.reset();
    return true;
}

void FanStateMachine::settle() {
    candidate.reset();
    candidateSince.reset();
}

void FanStateMachine::chooseLevel(FanLevel base, std::optional<double> ratio, Date now) {
    FanLevel target = base;
    if (!ratio) {
        // The high levels cannot be held without a top speed.
        if (level >= FanLevel::vacuum) {
            level = base;
            settle();
            return;
        }
    } else {
        if (level == FanLevel::takeoff && *ratio >= takeoffStays) {
            settle();
            return;
        }
        if (*ratio >= takeoffEnters) {
            target = FanLevel::takeoff;
        } else if (*ratio >= vacuumEnters || (level == FanLevel::vacuum && *ratio >= vacuumStays)) {
            target = FanLevel::vacuum;
        }
    }
    if (target == level) {
        settle();
        return;
    }
    if (candidate != target) {
        candidate = target;
        candidateSince = now;
    }
    if (now - *candidateSince >= (target > level ? rise : fall)) {
        level = target;
        settle();
    }
}

} // namespace varnet
