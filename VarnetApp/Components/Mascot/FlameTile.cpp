#include "VarnetApp/Components/Mascot/MascotDrawing.h"
#include "VarnetApp/Components/Mascot/MascotPainter.h"

#include <algorithm>

namespace varnet {

namespace {

constexpr QRgb tileColor = 0xFF362219;
constexpr QRgb outerGlow = 0xFF462A1C;
constexpr QRgb innerGlow = 0xFF5A331F;
constexpr QRgb benchColor = 0xFF22150F;
constexpr QRgb edgeColor = 0xFF6A4531;

// From here down the tile is plain: discs and bench would only muddy it.
constexpr int furnished = 44;
// From here down it fills its box and has no edge line.
constexpr int edged = 28;

void drawFurnished(QPainter& painter, const QPainterPath& tile) {
    const QRectF box(0, 0, 512, 512);
    QPainterPath discs;
    discs.addEllipse(QPointF(256, 300), 208, 208);
    painter.fillPath(discs.intersected(tile), QColor::fromRgba(outerGlow));
    painter.fillPath(
        [] {
            QPainterPath disc;
            disc.addEllipse(QPointF(256, 316), 148, 148);
            return disc;
        }(),
        QColor::fromRgba(innerGlow));
    QPainterPath bench;
    bench.addRect(QRectF(0, 420, box.width(), 92));
    painter.fillPath(bench.intersected(tile), QColor::fromRgba(benchColor));
}

} // namespace

void paintFlameTile(QPainter& painter, const QRectF& box, FlameExpression expression,
                    double devicePixelRatio) {
    const MascotSquare square(box, devicePixelRatio);
    if (square.empty()) return;
    const int pixels = square.pixels;
    const bool furniture = pixels >= furnished;
    const bool edge = pixels >= edged;

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    square.enterBox(painter);
    const QRectF tileBox = edge ? QRectF(16, 16, 480, 480) : QRectF(0, 0, 512, 512);
    const double radius = edge ? 112 : 120;
    QPainterPath tile;
    tile.addRoundedRect(tileBox, radius, radius);
    painter.fillPath(tile, QColor::fromRgba(tileColor));
    if (furniture) drawFurnished(painter, tile);
    if (edge) {
        const double line = std::max(4.0, 512.0 / pixels);
        painter.setPen(QPen(QColor::fromRgba(edgeColor), line));
        painter.setBrush(Qt::NoBrush);
        const double half = line / 2;
        painter.drawRoundedRect(tileBox.adjusted(half, half, -half, -half), radius - half, radius - half);
    }
    painter.restore();

    const double unit = square.side / 512;
    if (furniture) {
        // The flame sits on the bench.
        const QRectF seat(square.corner + QPointF(36, 44) * unit,
                          QSizeF(.78 * square.side, .78 * square.side));
        paintMascot(painter, seat, expression, square.ratio);
    } else {
        const int flame = std::max(1, qRound(pixels * (edge ? .8 : .875)));
        const int inset = (pixels - flame) / 2;
        const QPointF corner = square.corner + QPointF(inset, inset) / square.ratio;
        const double side = flame / square.ratio;
        paintMascot(painter, QRectF(corner, QSizeF(side, side)), expression, square.ratio);
    }
    painter.restore();
}

} // namespace varnet
