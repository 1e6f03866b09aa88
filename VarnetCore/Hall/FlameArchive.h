#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Hall/FlameCalendar.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// A personal best.
struct FlameRecord {
    std::string id; ///< "app", "fan", "leftover" or "cleanup"
    std::string label;
    double value = 0; ///< percent of the whole machine, RPM, seconds or bytes, by the id
    Date date;

    friend bool operator==(const FlameRecord&, const FlameRecord&) = default;
};

/// What one day amounted to.
struct FlameDay {
    Date date;                          ///< the day's start
    double seconds = 0;                 ///< observed
    std::optional<double> peakCPU = {}; ///< percent of the whole machine
    std::int64_t stops = 0;             ///< servers seen to stop when asked to
    std::int64_t ghosts = 0;            ///< forgotten ones among them
    std::int64_t folders = 0;           ///< moved to the Trash
    std::uint64_t trashBytes = 0;       ///< moved to the Trash
    std::optional<FlameRecord> topApp = {};

    friend bool operator==(const FlameDay&, const FlameDay&) = default;
};

/// The collection's memory across runs: the contents of "flame-collection.json".
struct FlameArchive {
    static constexpr int currentSchema = 1;
    /// Days that summaries go back, today included; and most stops remembered as credited.
    static constexpr int mostDays = 90;
    static constexpr std::size_t mostCreditedStops = 2048;

    int schema = currentSchema;
    Date started;         ///< when the collection began
    std::string timezone; ///< the zone that defines its days; kept when the machine travels
    std::map<std::string, double> metrics;
    std::map<std::string, Date> unlocked; ///< by badge id: when it was earned
    std::map<std::string, FlameRecord> records;
    std::vector<FlameDay> days;             ///< oldest first
    std::set<Date> qualifiedDays;           ///< starts of the days that were watched for long enough
    std::set<Date> cleanupDays;             ///< starts of the days with a reviewed cleanup
    std::set<std::string> tools;            ///< agents seen with an origin that was verified
    std::set<std::string> inspectedKinds;   ///< "application", "project", "system"
    std::vector<std::string> creditedStops; ///< identities of servers, oldest first

    /// An empty collection that begins now, in the zone that the machine is in.
    static FlameArchive beginning(Date now);

    FlameCalendar calendar() const noexcept { return FlameCalendar(timezone); }
    /// 0 while nothing was counted.
    double metric(std::string_view key) const;

    /// Compact JSON; dates as seconds since 2001-01-01 UTC.
    std::string encode() const;
    /// Empty for anything that is not a whole archive. Any schema is read.
    static std::optional<FlameArchive> decode(std::string_view json);

    friend bool operator==(const FlameArchive&, const FlameArchive&) = default;
};

} // namespace varnet
