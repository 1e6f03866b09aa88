#pragma once

#include "VarnetApp/Previews/Picture.h"

#include <filesystem>
#include <vector>

namespace varnet {

/// The whole disk in its states; all names begin with "disk".
std::vector<Picture> wholeDiskScreens();

/// "disk-measured": the map of a small tree of real files, which are written into the folder and measured.
/// None when that fails.
/// @param folder is there and empty; whoever made it removes it
std::vector<Picture> measuredDiskScreens(const std::filesystem::path& folder);

} // namespace varnet
