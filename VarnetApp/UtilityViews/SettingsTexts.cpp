#include "VarnetApp/UtilityViews/SettingsTexts.h"

#include "VarnetApp/Localization/FanReading.h"

#include <QDateTime>

#include <cmath>

namespace varnet::SettingsTexts {

namespace {

/// Null for what no calendar reaches.
QDateTime localTime(Date date) {
    const double seconds = date.sinceUnixEpoch();
    if (!std::isfinite(seconds) || std::abs(seconds) > 1e11) return {};
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(seconds)));
}

} // namespace

QString ignoredFinding(std::string_view id) {
    if (id.starts_with("cpu:")) return "High CPU finding";
    if (id.starts_with("duplicate:")) return "Similar finding";
    return "Process finding";
}

QString ignoredFindings(std::size_t count) {
    return QString("Ignored findings (%1)").arg(count);
}

QString fans(const FanSnapshot& fans, const Figures& figures) {
    const FanReading reading = fanReading(fans, figures);
    return reading.figure == Figures::unknown() ? reading.detail : reading.figure;
}

QString moment(Date date, Date now, const QLocale& locale) {
    const QDateTime then = localTime(date);
    if (!then.isValid()) return Figures::unknown();
    QString time = locale.toString(then.time(), QLocale::ShortFormat);
    if (then.date() == localTime(now).date()) return time;
    const bool czech = locale.language() == QLocale::Czech;
    return locale.toString(then.date(), czech ? "d. MMMM" : "MMMM d") + ", " + time;
}

} // namespace varnet::SettingsTexts
