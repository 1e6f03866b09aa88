#pragma once

#include "VarnetCore/Monitoring/ApplicationGroup.h"

#include <span>
#include <string>
#include <vector>

namespace varnet::PanelOrder {

/// Groups that the panel names.
inline constexpr std::size_t shown = 3;

/// The ids of the groups that the panel names while it stays open.
std::vector<std::string> pinned(std::span<const ApplicationGroup> groups);

/// The busiest groups. Those that were pinned keep their order, so that rows don't jump under the pointer,
/// and one that has gone leaves its place without another taking it.
/// @param groups in the snapshot's order, which is that of CPU
/// @param pinnedOrder empty, or with nothing left of it: the first groups
/// @return pointers into `groups`
std::vector<const ApplicationGroup*> top(std::span<const ApplicationGroup> groups,
                                         std::span<const std::string> pinnedOrder);

} // namespace varnet::PanelOrder
