#include "VarnetApp/Components/Mascot/MascotPainter.h"

#include "VarnetApp/Components/Mascot/LittleFace.h"
#include "VarnetApp/Components/Mascot/MascotDrawing.h"

#include <algorithm>
#include <cmath>

namespace varnet {

namespace {

constexpr double boxSide = 512;
constexpr int largestImage = 4096;

QColor lickColor(const MascotArt& art) {
    for (const MascotShape& shape : art.shapes) {
        if (shape.part->layer == MascotLayer::lick) return QColor::fromRgba(shape.part->color);
    }
    return {};
}

/// Seat and hair in flat colour; the eyes are the caller's.
void fillLittleBody(QPainter& painter, const MascotArt& art, const PixelGrid& grid, const QPainterPath& body,
                    const QColor* only) {
    const QTransform shape = grid.shape();
    for (const MascotShape& part : art.shapes) {
        const QColor color = only != nullptr ? *only : QColor::fromRgba(part.part->color);
        if (part.part->layer == MascotLayer::puddle) {
            // Its rim would be a faint row of pixels under everybody else's seat.
            QPainterPath floor;
            floor.addRect(grid.x(0) - grid.size(), 0, 3 * grid.size(), grid.y(15));
            painter.fillPath(shape.map(part.path).intersected(floor), color);
        }
        if (part.part->layer == MascotLayer::body) painter.fillPath(body, color);
    }
}

void fillLick(QPainter& painter, const MascotArt& art, FlameExpression expression, const PixelGrid& grid,
              const QColor& color) {
    const QPainterPath mark = markPixels(littleFace(expression), grid);
    if (!mark.isEmpty()) {
        painter.fillPath(mark, color);
        return;
    }
    for (const MascotShape& shape : art.shapes) {
        if (shape.part->layer == MascotLayer::lick && shape.part->smallest == MascotLevel::tiny) {
            painter.fillPath(grid.shape().map(shape.path), color);
        }
    }
}

/// The level of 27 pixels and fewer: body, Lick and two eyes, all on whole pixels.
void drawLittle(QPainter& painter, FlameExpression expression, int pixels) {
    const MascotArt& art = mascotArt(expression);
    const LittleFace& face = littleFace(expression);
    const PixelGrid grid(pixels, art.top);
    const QColor ink = QColor::fromRgba(mascotPalette::ink);
    fillLittleBody(painter, art, grid, grid.shape().map(art.littleBody), nullptr);
    fillLick(painter, art, expression, grid, lickColor(art));
    painter.fillPath(eyePixels(face.left, grid), ink);
    painter.fillPath(eyePixels(face.right, grid), ink);
}

} // namespace

MascotSquare::MascotSquare(const QRectF& box, double devicePixelRatio)
    : side(std::min(box.width(), box.height())), pixels(0),
      ratio(devicePixelRatio > 0 ? devicePixelRatio : 1) {
    if (!(side > 0) || side * ratio > 65536) return;
    corner = box.center() - QPointF(side, side) / 2;
    pixels = static_cast<int>(std::floor(side * ratio + 1e-6));
    if (pixels < 1 || !little()) return;
    // Little ones stand on whole pixels, inside the box.
    const QPointF first(std::ceil(corner.x() * ratio - 1e-6), std::ceil(corner.y() * ratio - 1e-6));
    const double over = std::max(first.x() - corner.x() * ratio, first.y() - corner.y() * ratio);
    pixels = static_cast<int>(std::floor(side * ratio - over + 1e-6));
    corner = first / ratio;
}

void MascotSquare::enterPixels(QPainter& painter) const {
    painter.translate(corner);
    painter.scale(1 / ratio, 1 / ratio);
    // Rounding to whole pixels has room for nothing else in a box of a few.
    painter.setClipRect(0, 0, pixels, pixels, Qt::IntersectClip);
}

void MascotSquare::enterBox(QPainter& painter) const {
    painter.translate(corner);
    painter.scale(side / boxSide, side / boxSide);
}

void drawShape(QPainter& painter, const MascotPart& part, const QPainterPath& path, const QColor& color,
               MascotLevel level) {
    // Pens and brows must not thin out before the face around them does.
    const double heavier = level == MascotLevel::mid ? 1.25 : level == MascotLevel::compact ? 1.35 : 1;
    const double raised = level == MascotLevel::mid ? 4 : level == MascotLevel::compact ? 12 : 0;
    const bool brow = part.layer == MascotLayer::brow;
    const QPen pen(color, part.pen > 0 ? part.pen * heavier : 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    if (brow && raised > 0) painter.translate(0, -raised);
    const bool pupil =
        level == MascotLevel::compact && part.layer == MascotLayer::eye && part.color == mascotPalette::ink;
    if (part.pen > 0) {
        painter.strokePath(path, pen);
    } else {
        painter.fillPath(path, color);
        if ((brow && raised > 0) || pupil) painter.strokePath(path, pen);
    }
    if (brow && raised > 0) painter.translate(0, raised);
}

void drawMascot(QPainter& painter, const MascotArt& art, MascotLevel level) {
    for (const MascotShape& shape : art.shapes) {
        if (level < shape.part->smallest) continue;
        drawShape(painter, *shape.part, shape.path, QColor::fromRgba(shape.part->color), level);
    }
}

void paintMascot(QPainter& painter, const QRectF& box, FlameExpression expression, double devicePixelRatio) {
    const MascotSquare square(box, devicePixelRatio);
    if (square.empty()) return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (square.little()) {
        square.enterPixels(painter);
        drawLittle(painter, expression, square.pixels);
    } else {
        square.enterBox(painter);
        drawMascot(painter, mascotArt(expression), square.level());
    }
    painter.restore();
}

void paintSymbolicMascot(QPainter& painter, const QRectF& box, FlameExpression expression,
                         const QColor& color, double devicePixelRatio) {
    const MascotSquare square(box, devicePixelRatio);
    if (square.empty()) return;
    const MascotArt& art = mascotArt(expression);
    const LittleFace& face = littleFace(expression);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const bool little = square.little();
    // The larger sizes are the grid of 16 enlarged, so that lids stay crisp at its multiples.
    const PixelGrid grid(little ? square.pixels : 16, art.top);
    if (little) {
        square.enterPixels(painter);
    } else {
        square.enterBox(painter);
        painter.scale(boxSide / 16, boxSide / 16);
    }
    QPainterPath body = grid.shape().map(square.level() >= MascotLevel::mid ? art.body : art.littleBody);
    // Holes by the odd-even rule: subtracting them loses pupils where edges coincide.
    const QTransform toCells = QTransform::fromScale(16 / boxSide, 16 / boxSide);
    for (const LittleEye& eye : {face.left, face.right}) {
        body.addPath(little ? eyePixels(eye, grid) : toCells.map(eyeShape(eye)));
    }
    fillLittleBody(painter, art, grid, body, &color);
    if (little) {
        fillLick(painter, art, expression, grid, color);
    } else {
        for (const MascotShape& shape : art.shapes) {
            if (shape.part->layer != MascotLayer::lick || shape.part->smallest != MascotLevel::tiny) continue;
            painter.fillPath(grid.shape().map(shape.path), color);
        }
    }
    painter.restore();
}

QImage mascotImage(FlameExpression expression, int devicePixels, MascotStyle style) {
    if (devicePixels < 1 || devicePixels > largestImage) return {};
    QImage image(devicePixels, devicePixels, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return image;
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const QRectF box(image.rect());
    switch (style) {
    case MascotStyle::bare:
        paintMascot(painter, box, expression);
        break;
    case MascotStyle::tile:
        paintFlameTile(painter, box, expression);
        break;
    case MascotStyle::symbolic:
        paintSymbolicMascot(painter, box, expression, Qt::black);
        break;
    }
    return image;
}

} // namespace varnet
