#pragma once

#include "VarnetCore/Storage/StorageCleanupError.h"
#include "probes/Probes.h"

#include <expected>
#include <string>
#include <vector>

namespace varnet {

/// Where processes of this user stand and what they run from: no folder in use may move. This process and
/// those of other users do not count. A process whose folder is kept from us stands where its nearest
/// readable ancestor of this user stands.
/// @return incomplete when some process that is alive cannot be placed
std::expected<std::vector<std::string>, StorageCleanupError> activePaths(Probes& probes);

} // namespace varnet
