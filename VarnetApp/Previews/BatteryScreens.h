#pragma once

#include "VarnetApp/Previews/Picture.h"

#include <vector>

namespace varnet {

/// The battery page in its states, in an ordinary window and in the least one.
std::vector<Picture> batteryScreens();

} // namespace varnet
