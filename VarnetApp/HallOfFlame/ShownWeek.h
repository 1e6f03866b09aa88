#pragma once

#include "VarnetCore/Hall/FlameWeek.h"

namespace varnet {

/// The week of this moment in the collection's zone, or the one before it.
inline FlameWeek shownWeek(const FlameArchive& archive, Date now, bool last) {
    const Date start = archive.calendar().week(now).start;
    return FlameWeek::containing(archive, last ? start - 1 : start);
}

} // namespace varnet
