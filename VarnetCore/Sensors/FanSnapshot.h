#pragma once

#include "VarnetCore/Base/Date.h"

#include <optional>
#include <string_view>
#include <vector>

namespace varnet {

/// One fan.
struct Fan {
    int id = 0;
    double rpm = 0;                ///< revolutions per minute
    std::optional<double> maximum; ///< top speed; empty when not known

    /// Speeds up to this are believed.
    static constexpr double fastest = 20'000;

    /// Share of the top speed, 0 to 1; empty without a top speed that can be believed.
    std::optional<double> ratio() const noexcept;

    friend bool operator==(const Fan&, const Fan&) = default;
};

/// Whether the fan readings can be trusted.
enum class FanAvailability { available, fanless, unavailable, stale };

/// "available", "fanless", "unavailable" or "stale".
std::string_view rawValue(FanAvailability availability) noexcept;

/// How hard the fans work, rising.
enum class FanLevel { stopped = 0, running = 1, vacuum = 2, takeoff = 3 };

/// The fans as one pass knows them.
struct FanSnapshot {
    FanAvailability availability = FanAvailability::unavailable;
    std::vector<Fan> fans;              ///< empty unless available
    FanLevel level = FanLevel::stopped; ///< stopped unless available
    bool spunUp = false;                ///< fans that had stood still have just proved to turn again
    std::optional<Date> measuredAt;     ///< empty unless available

    /// Revolutions per minute of the fastest fan; empty unless available.
    std::optional<double> fastest() const noexcept;

    friend bool operator==(const FanSnapshot&, const FanSnapshot&) = default;
};

} // namespace varnet
