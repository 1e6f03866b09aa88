#pragma once

#include "VarnetApp/Previews/Picture.h"

#include <vector>

namespace varnet {

/// The activity lists, the inspector and the sheets in which something is stopped.
std::vector<Picture> listScreens();

} // namespace varnet
