#include "VarnetApp/BatteryViews/BatteryTexts.h"

#include "VarnetApp/Localization/BatteryDisplay.h"
#include "VarnetApp/Localization/DecimalRounding.h"
#include "VarnetApp/Localization/Figures.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace varnet::BatteryTexts {

namespace {

constexpr double mostMinutes = 2880; ///< that are told in hours and minutes

std::optional<QDateTime> local(Date date) {
    const double seconds = date.sinceUnixEpoch();
    if (!std::isfinite(seconds) || std::abs(seconds) > 1e11) return std::nullopt;
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(seconds)));
}

QString dayOf(const QDateTime& day, Date now, const QLocale& locale) {
    const auto today = local(now);
    const qint64 ago = today ? day.date().daysTo(today->date()) : -1;
    if (ago == 0) return "Today";
    if (ago == 1) return "Yesterday";
    return locale.toString(day, "ddd d MMM");
}

QString number(std::optional<double> value, int decimals, const QString& unit, const QLocale& locale) {
    if (!value || !std::isfinite(*value)) return Figures::unknown();
    return locale.toString(roundedHalfEven(*value, decimals), 'f', decimals) + unit;
}

std::optional<double> powerOf(const BatteryDashboard& battery) {
    return battery.dischargeWatts ? battery.dischargeWatts : battery.reading.watts;
}

} // namespace

Presence presenceOf(const BatteryDashboard* battery) {
    if (!battery) return Presence::gathering;
    switch (battery->reading.availability) {
    case BatteryAvailability::available:
        return Presence::present;
    case BatteryAvailability::absent:
        return battery->archive.empty() ? Presence::none : Presence::gone;
    case BatteryAvailability::unavailable:
        break;
    }
    return Presence::unreadable;
}

const BatteryReading* readingOf(const BatteryDashboard* battery) {
    return presenceOf(battery) == Presence::present ? &battery->reading : nullptr;
}

QString state(BatteryState state) {
    switch (state) {
    case BatteryState::onBattery:
        return "On battery";
    case BatteryState::charging:
        return "Charging";
    case BatteryState::charged:
        return "Fully charged";
    case BatteryState::pluggedIn:
        break;
    }
    return "Plugged in";
}

QString line(const BatteryDashboard* battery) {
    switch (presenceOf(battery)) {
    case Presence::gathering:
        return "Waiting for the first reading.";
    case Presence::unreadable:
        return "The battery isn’t answering. It is asked again every few seconds.";
    case Presence::gone:
        return "There is no battery now. This is what an earlier one left behind.";
    case Presence::none:
        return "There is none in this machine.";
    case Presence::present:
        break;
    }
    const BatteryReading& reading = battery->reading;
    return state(reading.state) + (reading.lowPowerMode ? " · Low power mode" : "");
}

Captioned time(const BatteryDashboard* battery) {
    const BatteryReading* const reading = readingOf(battery);
    if (!reading) return {"Time remaining", Figures::unknown()};
    switch (reading->state) {
    case BatteryState::onBattery:
        return {"Time remaining", BatteryDisplay::time(reading->minutesRemaining)};
    case BatteryState::charging:
        return {"Time to full", BatteryDisplay::time(reading->minutesToFull)};
    case BatteryState::charged:
    case BatteryState::pluggedIn:
        break;
    }
    return {"State", state(reading->state)};
}

QString power(const BatteryDashboard* battery, const QLocale& locale) {
    return BatteryDisplay::watts(readingOf(battery) ? powerOf(*battery) : std::nullopt, locale);
}

QString summary(const BatteryDashboard* battery, const QLocale& locale) {
    switch (presenceOf(battery)) {
    case Presence::gathering:
        return "Waiting for a reading";
    case Presence::unreadable:
        return "No reading";
    case Presence::gone:
    case Presence::none:
        return "No battery";
    case Presence::present:
        break;
    }
    const BatteryReading& reading = battery->reading;
    const std::optional<double> watts = powerOf(*battery);
    const QString behind = watts ? " · " + BatteryDisplay::watts(watts, locale) : QString();
    switch (reading.state) {
    case BatteryState::onBattery:
        return BatteryDisplay::time(reading.minutesRemaining) + behind;
    case BatteryState::charging:
        if (reading.minutesToFull) return "Full in " + BatteryDisplay::time(reading.minutesToFull);
        return state(reading.state) + behind;
    case BatteryState::charged:
    case BatteryState::pluggedIn:
        break;
    }
    return state(reading.state);
}

QString temperature(std::optional<double> celsius, const QLocale& locale) {
    return number(celsius, 1, " °C", locale);
}

QString capacity(std::optional<double> milliampereHours, const QLocale& locale) {
    return number(milliampereHours, 0, " mAh", locale);
}

QString designCapacity(std::optional<double> milliampereHours, const QLocale& locale) {
    return milliampereHours ? "of " + capacity(milliampereHours, locale) + " when new" : QString();
}

QString condition(BatteryCondition condition) {
    switch (condition) {
    case BatteryCondition::normal:
        return "Normal";
    case BatteryCondition::service:
        return "Service";
    case BatteryCondition::unknown:
        break;
    }
    return Figures::unknown();
}

QString measured(double seconds) {
    const double minutes = seconds / 60;
    if (!(minutes >= 0.5)) return "Under 1 min";
    if (minutes > mostMinutes) return "Over 48 hr";
    return BatteryDisplay::time(minutes);
}

QString charges(const BatterySession& session, const QLocale& locale) {
    return BatteryDisplay::percent(session.startCharge, locale) + " to " +
           BatteryDisplay::percent(session.endCharge, locale);
}

QString when(const BatterySession& session, Date now, const QLocale& locale) {
    const auto start = local(session.start);
    const auto end = local(session.end);
    if (!start || !end) return Figures::unknown();
    return dayOf(*start, now, locale) + ' ' + locale.toString(*start, "HH:mm") + " – " +
           locale.toString(*end, "HH:mm");
}

QString moment(Date date, const QString& format, const QLocale& locale) {
    const auto time = local(date);
    return time ? locale.toString(*time, format) : Figures::unknown();
}

} // namespace varnet::BatteryTexts
