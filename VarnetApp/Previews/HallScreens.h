#pragma once

#include "VarnetApp/Previews/Picture.h"

#include <vector>

namespace varnet {

/// The Hall of Flame, and the sheets in which something is shared.
std::vector<Picture> hallScreens();

/// What the collection's own renderer shows: the page in the smallest window, and the earned badges.
Picture smallestHall();
Picture earnedBadges();
/// The report about to be shared.
Picture reportSheet();

} // namespace varnet
