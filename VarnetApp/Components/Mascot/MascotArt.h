#pragma once

#include "VarnetApp/Components/Mascot/MascotParts.h"

#include <QPainterPath>
#include <QRectF>

#include <vector>

namespace varnet {

struct MascotShape {
    const MascotPart* part;
    QPainterPath path;
};

/// A mood read once: its shapes in painting order and what the little sizes need of it.
struct MascotArt {
    std::vector<MascotShape> shapes;
    QPainterPath body;
    QPainterPath littleBody; ///< the body where only whole pixels count
    double top = 0;          ///< the highest y of the body
    QRectF lickBox;          ///< empty without a Lick
};

/// Kept for the life of the process from the first time a mood is asked for; any thread may ask.
const MascotArt& mascotArt(FlameExpression expression);

/// @param devicePixels the side of the mascot's box
MascotLevel mascotLevel(int devicePixels);

} // namespace varnet
