#pragma once

#include "VarnetCore/Base/Date.h"

#include <string>
#include <string_view>

namespace date {
class time_zone;
}

namespace varnet {

/// From a moment up to, but not including, another.
struct DateInterval {
    Date start;
    Date end;

    bool contains(Date date) const noexcept { return date >= start && date < end; }
};

/// Days and weeks of one time zone, through its changes of the clocks. Weeks begin on Monday. A plain value;
/// looking a zone up is cheap. Moments beyond the years 1 to 9999 count as the nearest one within.
class FlameCalendar {
public:
    /// A day of the calendar and the time on its clocks.
    struct Clock {
        int year = 0;
        unsigned month = 0; ///< from 1
        unsigned day = 0;   ///< from 1
        int hour = 0;
        int minute = 0;
    };

    /// @param zone an identifier of the zone database, letter for letter; any other counts as GMT
    explicit FlameCalendar(std::string_view zone) noexcept;

    /// Identifier of the zone that the machine is in; "GMT" when that cannot be told.
    static std::string currentZone();

    /// The first moment of the day, which is not midnight where the clocks skip that.
    Date startOfDay(Date date) const noexcept;
    /// The first moment of the day that lies some days earlier in the calendar.
    Date startOfDay(Date date, int daysEarlier) const noexcept;
    /// From Monday to Monday.
    DateInterval week(Date date) const noexcept;
    Clock clock(Date date) const noexcept;

private:
    const date::time_zone* zone_; ///< null: GMT; lives as long as the program
};

} // namespace varnet
