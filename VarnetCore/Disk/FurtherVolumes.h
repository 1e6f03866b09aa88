#pragma once

#include <string>
#include <vector>

namespace varnet {

/// Where this machine has mounted further local file systems that hold the user's data. Ascending.
std::vector<std::string> furtherVolumes();

} // namespace varnet
