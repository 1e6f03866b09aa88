#pragma once

#include "VarnetCore/Hall/FlameArchive.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace varnet {

/// One week of a collection, from Monday on, in the collection's zone.
struct FlameWeek {
    Date start;
    Date end;                   ///< the first moment of the next week
    std::vector<FlameDay> days; ///< as they are stored
    int badges = 0;             ///< earned in the week

    /// The week that holds the date.
    static FlameWeek containing(const FlameArchive& archive, Date date);

    // Sums over the days; what does not fit counts as the most that does.
    std::int64_t stops() const noexcept;
    std::int64_t ghosts() const noexcept;
    std::int64_t folders() const noexcept;
    std::uint64_t trashBytes() const noexcept;
    /// Percent of the whole machine; empty: nothing was measured.
    std::optional<double> peakCPU() const noexcept;
    /// The greatest of the days' busiest applications, the first of equals; null: none was measured.
    const FlameRecord* topApp() const noexcept;
};

} // namespace varnet
