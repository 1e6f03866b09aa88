#pragma once

#include <QPainterPath>

#include <string_view>

namespace varnet {

/// Reads SVG path data of absolute commands: M, L, H, V, C, Q, A and Z, with repeated arguments and any mix
/// of commas and blanks. Reading ends at the first thing it cannot understand; what came before is kept.
QPainterPath pathFromData(std::string_view data);

} // namespace varnet
