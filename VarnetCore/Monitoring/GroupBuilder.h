#pragma once

#include "VarnetCore/Monitoring/ApplicationGroup.h"

#include <cstdint>
#include <span>
#include <vector>

namespace varnet {

/// Puts the processes of one pass into groups: by project, else by application, else each on its own.
/// @return busiest first, groups of unknown CPU last, equal ones by id
std::vector<ApplicationGroup> makeGroups(std::span<const SampleRef> processes, std::uint32_t currentUID);

} // namespace varnet
