#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Base/Uuid.h"
#include "VarnetCore/Battery/BatteryAppImpact.h"
#include "VarnetCore/Battery/BatteryReading.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// A point of the charge curve.
struct BatteryPoint {
    Date date;
    double charge = 0; ///< percent
    BatteryState state = BatteryState::pluggedIn;
    std::optional<double> watts;
    Uuid segment; ///< one unbroken run of samples in one state; no line crosses two

    friend bool operator==(const BatteryPoint&, const BatteryPoint&) = default;
};

/// A day's estimate of the capacity.
struct BatteryHealthPoint {
    Date date;
    double capacity = 0; ///< percent of the design capacity
    std::optional<int> cycles;

    friend bool operator==(const BatteryHealthPoint&, const BatteryHealthPoint&) = default;
};

/// A stretch of time on battery.
struct BatterySession {
    Uuid id;
    Date start;
    Date end; ///< the last sample so far
    std::optional<double> startCharge;
    std::optional<double> endCharge;
    double observedSeconds = 0;                   ///< measured; may be less than from start to end
    std::map<std::string, BatteryAppImpact> apps; ///< by group id

    friend bool operator==(const BatterySession&, const BatterySession&) = default;
};

/// The battery's memory across runs: the contents of "battery-history.json". Lists are oldest first.
struct BatteryArchive {
    static constexpr int currentVersion = 1;

    int version = currentVersion;
    std::vector<BatteryPoint> points;
    std::vector<BatteryHealthPoint> health;
    std::vector<BatterySession> sessions;

    /// Longest kept, in seconds, and most kept.
    static constexpr double pointAge = 604'800;
    static constexpr double healthAge = 31'536'000;
    static constexpr double sessionAge = 2'592'000;
    static constexpr std::size_t mostPoints = 12'000;
    static constexpr std::size_t mostHealth = 366;
    static constexpr std::size_t mostSessions = 30;

    /// Drops what is too old, what lies in the future, and the oldest beyond the most.
    void prune(Date at);

    /// Compact JSON; dates as seconds since 2001-01-01 UTC.
    std::string encode() const;
    /// Empty for anything that is not a whole archive. Any version is read.
    static std::optional<BatteryArchive> decode(std::string_view json);

    friend bool operator==(const BatteryArchive&, const BatteryArchive&) = default;
};

} // namespace varnet
