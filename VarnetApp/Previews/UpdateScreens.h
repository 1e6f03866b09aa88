#pragma once

#include "VarnetApp/Previews/Picture.h"

#include <vector>

namespace varnet {

/// What the settings and the panel say of updates, in all their states.
std::vector<Picture> updateScreens();

} // namespace varnet
