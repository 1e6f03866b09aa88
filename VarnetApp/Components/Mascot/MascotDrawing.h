#pragma once

#include "VarnetApp/Components/Mascot/MascotArt.h"

#include <QPainter>
#include <QRectF>

namespace varnet {

/// The square of device pixels that a box gives the mascot. The little sizes stand on whole pixels inside it.
struct MascotSquare {
    MascotSquare(const QRectF& box, double devicePixelRatio);

    bool empty() const noexcept { return pixels < 1; }
    MascotLevel level() const { return mascotLevel(pixels); }
    bool little() const { return level() <= MascotLevel::small; }
    /// Turns the painter's units into device pixels from the square's corner.
    void enterPixels(QPainter& painter) const;
    /// Turns the painter's units into the 512 box.
    void enterBox(QPainter& painter) const;

    QPointF corner; ///< in the painter's units
    double side;    ///< in the painter's units
    int pixels;
    double ratio;
};

/// One shape as a level draws it, in the 512 box.
void drawShape(QPainter& painter, const MascotPart& part, const QPainterPath& path, const QColor& color,
               MascotLevel level);

/// Every shape of a mood that a level draws.
void drawMascot(QPainter& painter, const MascotArt& art, MascotLevel level);

} // namespace varnet
