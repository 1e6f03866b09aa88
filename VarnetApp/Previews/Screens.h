#pragma once

#include "VarnetApp/Previews/Picture.h"

#include <vector>

namespace varnet {

/// Every screen that there is a picture of.
std::vector<Picture> screens();

} // namespace varnet
