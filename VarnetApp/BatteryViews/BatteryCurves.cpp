#include "VarnetApp/BatteryViews/BatteryCurves.h"

#include "VarnetCore/Battery/BatteryArchive.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace varnet {

namespace {

constexpr double hour = 3600;
constexpr double day = 86'400;

/// Adds a stretch, to the last one where it begins at its end.
void extend(QList<QPointF>& stretches, double from, double to) {
    if (!stretches.isEmpty() && stretches.back().y() >= from)
        stretches.back().setY(std::max(stretches.back().y(), to));
    else
        stretches.append({from, to});
}

} // namespace

ChargeCurve chargeCurve(std::span<const BatteryPoint> points, Date from, Date to, Date now) {
    ChargeCurve curve;
    const BatteryPoint* last = nullptr;
    const auto close = [&](const BatteryPoint& point, double until) {
        if (point.state == BatteryState::charging) extend(curve.charging, point.date.seconds, until);
    };
    for (const BatteryPoint& point : points) {
        const double at = point.date.seconds;
        if (!(at >= from.seconds) || !(at <= to.seconds) || (last && at < last->date.seconds)) continue;
        const double before = last ? last->date.seconds : from.seconds;
        const bool follows = at - before <= ChargeCurve::longestStep;
        if (last) {
            close(*last, follows ? at : before);
            if (!follows || last->segment != point.segment)
                curve.starts.append(static_cast<int>(curve.points.size()));
        }
        if (!follows) extend(curve.missing, before, at);
        curve.points.append({at, point.charge});
        curve.sources.append(&point);
        last = &point;
    }
    const double end = last ? last->date.seconds : from.seconds;
    const bool fresh = now.seconds - end <= ChargeCurve::longestStep;
    if (last) close(*last, fresh ? std::max(end, now.seconds) : end);
    if (!fresh) extend(curve.missing, end, to.seconds);
    return curve;
}

HealthCurve healthCurve(std::span<const BatteryHealthPoint> health, Date now) {
    HealthCurve curve;
    double least = 100;
    double oldest = now.seconds;
    for (const BatteryHealthPoint& point : health) {
        const double at = std::floor(point.date.seconds / hour) * hour;
        if (!std::isfinite(at) || !std::isfinite(point.capacity)) continue;
        if (!curve.points.isEmpty() && at < curve.points.back().x()) continue;
        curve.points.append({at, point.capacity});
        curve.sources.append(&point);
        least = std::min(least, point.capacity);
        oldest = std::min(oldest, at);
    }
    for (const double days : {365.0, 180.0, 90.0, 30.0})
        if (now.seconds - oldest <= days * day) curve.days = days;
    curve.low = std::clamp(std::floor(least / 20) * 20, 0.0, 80.0);
    return curve;
}

} // namespace varnet
