#pragma once

#include "VarnetCore/Battery/BatteryTracker.h"

#include <QLocale>
#include <QString>

#include <optional>

/// The battery page's words: whole English sentences, figures in the user's own way. What is not known is
/// "—". A dashboard may always be null: nothing was read yet.
namespace varnet::BatteryTexts {

/// What there is to show.
enum class Presence {
    gathering,  ///< nothing was read yet
    present,    ///< readings come in
    unreadable, ///< there may be a battery, but it does not answer
    gone,       ///< there is none, but of an earlier one something is kept
    none        ///< there is none and never was
};
Presence presenceOf(const BatteryDashboard* battery);

/// The reading, while there is one to show; null: none.
const BatteryReading* readingOf(const BatteryDashboard* battery);

/// "On battery", "Charging", "Fully charged", "Plugged in".
QString state(BatteryState state);
/// The line under the page's headline: "On battery · Low power mode", or why there is no reading.
QString line(const BatteryDashboard* battery);

/// A figure and what it is.
struct Captioned {
    QString label;
    QString figure;
    friend bool operator==(const Captioned&, const Captioned&) = default;
};
/// How long it lasts, how long until it is full, or which state it rests in.
Captioned time(const BatteryDashboard* battery);
/// The power that flows now, while it discharges averaged over half a minute.
QString power(const BatteryDashboard* battery, const QLocale& locale);

/// The line under the charge on the overview: "3 hr 24 min · 13.0 W".
QString summary(const BatteryDashboard* battery, const QLocale& locale);

/// "31.4 °C".
QString temperature(std::optional<double> celsius, const QLocale& locale);
/// "4,687 mAh".
QString capacity(std::optional<double> milliampereHours, const QLocale& locale);
/// "of 5,150 mAh when new", empty when that is not known.
QString designCapacity(std::optional<double> milliampereHours, const QLocale& locale);
QString condition(BatteryCondition condition);

/// How long of a session was measured: "2 hr 51 min", "Under 1 min", "Over 48 hr".
QString measured(double seconds);
/// "100% to 82%".
QString charges(const BatterySession& session, const QLocale& locale);
/// "Today 11:37 – 14:28", "Yesterday 22:10 – 23:05", "Wed 11 Nov 09:12 – 10:40".
QString when(const BatterySession& session, Date now, const QLocale& locale);

/// A moment, here, in the words of a QLocale format; "—" beyond every calendar.
QString moment(Date date, const QString& format, const QLocale& locale);

} // namespace varnet::BatteryTexts
