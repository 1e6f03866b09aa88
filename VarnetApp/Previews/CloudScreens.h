#pragma once

#include "VarnetApp/Previews/Picture.h"

#include <vector>

namespace varnet {

/// The account's window and the form for feedback in their states.
std::vector<Picture> cloudScreens();

} // namespace varnet
