#pragma once

#include "VarnetApp/Previews/Picture.h"

#include <vector>

namespace varnet {

/// The storage page's projects in their states, and the sheets over it.
std::vector<Picture> storageScreens();

} // namespace varnet
