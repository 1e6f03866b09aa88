#pragma once

#include <QPainter>

#include <cmath>

namespace varnet {

/// Device pixels of one unit of a painter that may be scaled and moved but is not turned.
inline double painterScale(const QPainter& painter) {
    const double scale = std::abs(painter.deviceTransform().m11());
    return scale > 0 ? scale : 1;
}

} // namespace varnet
