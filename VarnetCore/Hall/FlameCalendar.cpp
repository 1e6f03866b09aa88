#include "VarnetCore/Hall/FlameCalendar.h"

#include <date/date.h>
#include <date/tz.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <exception>

namespace varnet {

namespace {

using Seconds = std::chrono::seconds;

// The years that both the zone database and a calendar page can hold.
constexpr date::sys_seconds earliest = date::sys_days(date::year(1) / 1 / 2);
constexpr date::sys_seconds latest = date::sys_days(date::year(9999) / 12 / 30);

date::sys_seconds systemTime(Date moment) noexcept {
    const double seconds = std::floor(moment.sinceUnixEpoch());
    if (!(seconds > static_cast<double>(earliest.time_since_epoch().count()))) return earliest;
    if (seconds >= static_cast<double>(latest.time_since_epoch().count())) return latest;
    return date::sys_seconds(Seconds(static_cast<std::int64_t>(seconds)));
}

Date dateOf(date::sys_seconds time) noexcept {
    return Date::fromUnix(static_cast<double>(time.time_since_epoch().count()));
}

/// Null for a name that is no zone's, and where there is no zone database.
const date::time_zone* zoneNamed(std::string_view name) noexcept {
    try {
        const auto& zones = date::get_tzdb().zones;
        const auto found = std::ranges::lower_bound(
            zones, name, {}, [](const date::time_zone& zone) { return std::string_view(zone.name()); });
        return found != zones.end() && found->name() == name ? &*found : nullptr;
    } catch (const std::exception&) {
        return nullptr;
    }
}

date::local_seconds localTime(const date::time_zone* zone, date::sys_seconds time) noexcept {
    const date::local_seconds greenwich(time.time_since_epoch());
    if (!zone) return greenwich;
    try {
        return zone->to_local(time);
    } catch (const std::exception&) {
        return greenwich; // a zone whose file cannot be read
    }
}

/// A midnight that the clocks skip is the moment of the change; of two midnights it is the first.
Date startOf(const date::time_zone* zone, date::local_days day) noexcept {
    const date::sys_seconds greenwich(Seconds(day.time_since_epoch()));
    if (!zone) return dateOf(greenwich);
    try {
        return dateOf(zone->to_sys(date::local_seconds(day), date::choose::earliest));
    } catch (const std::exception&) {
        return dateOf(greenwich);
    }
}

date::local_days dayOf(const date::time_zone* zone, Date moment) noexcept {
    return date::floor<date::days>(localTime(zone, systemTime(moment)));
}

} // namespace

FlameCalendar::FlameCalendar(std::string_view zone) noexcept : zone_(zoneNamed(zone)) {}

std::string FlameCalendar::currentZone() {
    if (const char* const variable = std::getenv("TZ")) {
        std::string_view name = variable;
        if (name.starts_with(':')) name.remove_prefix(1);
        if (zoneNamed(name)) return std::string(name);
    }
    try {
        return date::current_zone()->name();
    } catch (const std::exception&) {
        return "GMT";
    }
}

Date FlameCalendar::startOfDay(Date date) const noexcept {
    return startOf(zone_, dayOf(zone_, date));
}

Date FlameCalendar::startOfDay(Date date, int daysEarlier) const noexcept {
    return startOf(zone_, dayOf(zone_, date) - date::days(daysEarlier));
}

DateInterval FlameCalendar::week(Date date) const noexcept {
    const date::local_days day = dayOf(zone_, date);
    const date::local_days monday = day - (date::weekday(day) - date::Monday);
    return {startOf(zone_, monday), startOf(zone_, monday + date::days(7))};
}

FlameCalendar::Clock FlameCalendar::clock(Date date) const noexcept {
    const date::local_seconds local = localTime(zone_, systemTime(date));
    const date::local_days day = date::floor<date::days>(local);
    const date::year_month_day page(day);
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(local - day).count();
    return {static_cast<int>(page.year()), static_cast<unsigned>(page.month()),
            static_cast<unsigned>(page.day()), static_cast<int>(minutes / 60),
            static_cast<int>(minutes % 60)};
}

} // namespace varnet
