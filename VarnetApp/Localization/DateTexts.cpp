#include "VarnetApp/Localization/DateTexts.h"

#include <QDate>
#include <QDateTime>

#include <cmath>

namespace varnet {

namespace {

/// Czech sets a point behind the day's number and puts the month into another case, which Qt knows how to do.
QString dayFormat(const QLocale& locale) {
    return locale.language() == QLocale::Czech ? QStringLiteral("d.") : QStringLiteral("d");
}

QDate dateOf(Date date, const FlameCalendar& calendar) {
    const FlameCalendar::Clock clock = calendar.clock(date);
    return QDate(clock.year, static_cast<int>(clock.month), static_cast<int>(clock.day));
}

} // namespace

QString DateTexts::day(Date date, const FlameCalendar& calendar, const QLocale& locale) {
    return locale.toString(dateOf(date, calendar), dayFormat(locale) + " MMMM yyyy");
}

QString DateTexts::week(const DateInterval& week, const FlameCalendar& calendar, const QLocale& locale) {
    const QDate first = dateOf(week.start, calendar);
    const QDate last = dateOf(week.end - 1, calendar);
    QString format = dayFormat(locale);
    if (first.month() != last.month()) format += " MMMM";
    if (first.year() != last.year()) format += " yyyy";
    return locale.toString(first, format) + QStringLiteral("–") +
           locale.toString(last, dayFormat(locale) + " MMMM yyyy");
}

QString DateTexts::moment(Date date, const QLocale& locale) {
    const double seconds = date.sinceUnixEpoch();
    if (!std::isfinite(seconds) || std::abs(seconds) > 1e11) return QStringLiteral("—");
    const QDateTime time = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(seconds)));
    return locale.toString(time, dayFormat(locale) + " MMMM yyyy, HH:mm");
}

} // namespace varnet
