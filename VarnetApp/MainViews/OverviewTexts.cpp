#include "VarnetApp/MainViews/OverviewTexts.h"

#include "VarnetCore/Base/Display.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace varnet::OverviewTexts {

std::optional<Date> measuredAt(const MonitorSnapshot& snapshot) {
    if (snapshot.error)
        return snapshot.history.empty() ? std::nullopt : std::optional(snapshot.history.back().date);
    const bool nothingYet = snapshot.date == Date{};
    return nothingYet ? std::nullopt : std::optional(snapshot.date);
}

QString updated(std::optional<Date> measured, Date now) {
    if (!measured) return "Updated " + Figures::unknown();
    const double age = now - *measured;
    if (age >= 60)
        return QString("Updated %1 ago").arg(QString::fromStdString(Display::duration(*measured, now)));
    return QString("Updated %1s ago").arg(age > 0 ? static_cast<int>(age) : 0);
}

QString thermal(Thermal thermal) {
    const std::string_view name = rawValue(thermal);
    return "Thermal: " + QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
}

QString memory(std::optional<std::uint64_t> used, std::uint64_t physical, const Figures& figures) {
    if (!used || physical == 0) return {};
    QString part = figures.memory(used);
    const QString whole = figures.memory(physical);
    const QString unit = whole.mid(whole.lastIndexOf(' '));
    if (part.endsWith(unit)) part.chop(unit.size());
    return part + " of " + whole + " RAM";
}

QString tools(std::size_t count) {
    return QString("%1 recognized tool%2").arg(count).arg(count == 1 ? "" : "s");
}

QString timeOfDay(Date date) {
    const double seconds = date.sinceUnixEpoch();
    if (!std::isfinite(seconds) || std::abs(seconds) > 1e14) return Figures::unknown();
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(seconds))).toString("HH:mm:ss");
}

QString timeline(std::span<const CPUPoint> history, const Figures& figures) {
    if (history.empty()) return {};
    const CPUPoint& highest = *std::ranges::max_element(history, {}, &CPUPoint::value);
    const CPUPoint& lowest = *std::ranges::min_element(history, {}, &CPUPoint::value);
    return QString("CPU now: %1. Highest: %2 at %3. Lowest: %4 at %5.")
        .arg(figures.wholePercent(history.back().value), figures.wholePercent(highest.value),
             timeOfDay(highest.date), figures.wholePercent(lowest.value), timeOfDay(lowest.date));
}

} // namespace varnet::OverviewTexts
