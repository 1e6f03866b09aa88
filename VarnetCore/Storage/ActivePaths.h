#pragma once

#include "VarnetCore/Storage/StorageCleanupError.h"
#include "probes/Probes.h"

#include <expected>
#include <string>
#include <vector>

namespace varnet {

/// Where processes of this user stand and what they run from: no folder in use may move. This process and
/// those of other users do not count. A process whose folder is kept from us stands where its nearest
/// readable ancestor of this user stands. The first process, from which all others come, is the system's or a
/// container's own whoever it runs as: it counts where it can be read.
/// @return incomplete when some process that is alive cannot be placed
std::expected<std::vector<std::string>, StorageCleanupError> activePaths(Probes& probes);

} // namespace varnet
