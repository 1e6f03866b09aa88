#pragma once

#include "VarnetApp/AppStore/Page.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <cstddef>
#include <optional>

namespace varnet {

/// The count beside a page in the sidebar; empty: none is shown.
/// @param unlocked badges earned so far
std::optional<std::size_t> itemCount(Page page, const MonitorSnapshot& snapshot, std::size_t unlocked);

} // namespace varnet
