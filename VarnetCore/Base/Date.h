#pragma once

#include <compare>

namespace varnet {

/// A moment: seconds since 2001-01-01 00:00:00 UTC, the form that the program's files hold.
/// A span between two moments is a plain double in seconds.
struct Date {
    double seconds = 0;

    /// Seconds from 1970-01-01 to 2001-01-01, both UTC.
    static constexpr double epochOffset = 978307200.0;

    static constexpr Date fromUnix(double secondsSince1970) noexcept {
        return {secondsSince1970 - epochOffset};
    }
    constexpr double sinceUnixEpoch() const noexcept { return seconds + epochOffset; }

    /// A moment before every other one: the year 1, so that "since then" is always long ago.
    static constexpr Date distantPast() noexcept { return {-63114076800.0}; }

    friend constexpr double operator-(Date a, Date b) noexcept { return a.seconds - b.seconds; }
    friend constexpr Date operator+(Date date, double span) noexcept { return {date.seconds + span}; }
    friend constexpr Date operator-(Date date, double span) noexcept { return {date.seconds - span}; }
    friend constexpr auto operator<=>(Date, Date) noexcept = default;
};

} // namespace varnet
