#pragma once

#include <optional>
#include <string>

namespace varnet {

/// The energy score that a group has gathered over a battery session.
struct BatteryAppImpact {
    std::string id;          ///< the group's id
    std::string name;        ///< the group's name
    double scoreSeconds = 0; ///< sum of score times seconds
    bool partial = false;    ///< part of the session lacks measurements

    /// Score per second over a session of so many seconds; empty unless that is above zero.
    std::optional<double> average(double seconds) const noexcept {
        return seconds > 0 ? std::optional(scoreSeconds / seconds) : std::nullopt;
    }

    friend bool operator==(const BatteryAppImpact&, const BatteryAppImpact&) = default;
};

} // namespace varnet
