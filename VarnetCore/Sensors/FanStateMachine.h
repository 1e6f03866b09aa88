#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Sensors/FanSnapshot.h"

#include <optional>
#include <vector>

namespace varnet {

/// Turns raw fan speeds into one steady verdict: levels rise after ten seconds and fall after twenty, and the
/// high ones are held a little below where they are entered. A plain value, driven by the readings' dates.
struct FanStateMachine {
    FanLevel level = FanLevel::stopped; ///< what is published
    std::optional<FanLevel> candidate;  ///< what wants to replace it
    std::optional<Date> candidateSince; ///< when that was first wanted
    bool hadZero = false;               ///< all fans stood still and have not proved to turn again
    std::optional<Date> positiveSince;  ///< when they first turned again
    std::optional<Date> lastDate;       ///< of the reading before

    /// Seconds.
    static constexpr double rise = 10;
    static constexpr double fall = 20;
    static constexpr double spinUp = 10;     ///< turning this long proves that they have come back
    static constexpr double maximumGap = 15; ///< a longer silence forgets everything

    /// Shares of the top speed.
    static constexpr double vacuumEnters = 0.65;
    static constexpr double vacuumStays = 0.6;
    static constexpr double takeoffEnters = 0.85;
    static constexpr double takeoffStays = 0.8;

    /// Takes a reading. One fan with a speed that cannot be voids the whole of it.
    FanSnapshot update(std::vector<Fan> fans, FanAvailability availability, Date now);
    void reset() { *this = {}; }

    friend bool operator==(const FanStateMachine&, const FanStateMachine&) = default;

private:
    bool watchSpinUp(bool turning, Date now);
    void chooseLevel(FanLevel base, std::optional<double> ratio, Date now);
    void settle();
};

} // namespace varnet
