#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Hall/FlameCalendar.h"

#include <QLocale>
#include <QString>

/// Dates as the user reads them, the day before the month.
namespace varnet::DateTexts {

/// Of a calendar's day: "14 September 2025".
QString day(Date date, const FlameCalendar& calendar, const QLocale& locale);
/// The first and the last day of a week: "17–23 November 2025", with as much of the first as differs.
QString week(const DateInterval& week, const FlameCalendar& calendar, const QLocale& locale);
/// Here: "21 November 2025, 14:31".
QString moment(Date date, const QLocale& locale);

} // namespace varnet::DateTexts
