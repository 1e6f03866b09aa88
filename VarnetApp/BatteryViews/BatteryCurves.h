#pragma once

#include <QList>
#include <QPointF>

#include <span>

namespace varnet {

struct BatteryHealthPoint;
struct BatteryPoint;
struct Date;

/// The charge over a span of time as a chart draws it: x in seconds of a Date, y in percent.
struct ChargeCurve {
    QList<QPointF> points;   ///< ascending
    QList<int> starts;       ///< where a line begins that is not joined with the one before
    QList<QPointF> charging; ///< from x to y
    QList<QPointF> missing;  ///< likewise: nothing was measured
    /// What each point was made of; pointers into the given points.
    QList<const BatteryPoint*> sources;

    /// Longest time in seconds between two points that belong together: two of the tracker's own intervals
    /// and some delay.
    static constexpr double longestStep = 150;
};

/// @param points oldest first; one that goes back in time is left out
/// @param to the right edge; @param now at most that: until when there could be points
ChargeCurve chargeCurve(std::span<const BatteryPoint> points, Date from, Date to, Date now);

/// The capacity over the months.
struct HealthCurve {
    QList<QPointF> points; ///< x to the full hour: an estimate of today moves on with every reading
    double days = 365;     ///< the span that holds all of them: 30, 90, 180 or 365
    double low = 80;       ///< percent at the lower edge; the upper is 100
    QList<const BatteryHealthPoint*> sources;

    /// Longest time in seconds between two estimates that are joined.
    static constexpr double longestStep = 7.5 * 86'400;
};

HealthCurve healthCurve(std::span<const BatteryHealthPoint> health, Date now);

} // namespace varnet
