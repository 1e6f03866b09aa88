#include "VarnetApp/Application/TrayFace.h"

#include "VarnetApp/Components/Mascot/MascotPainter.h"
#include "VarnetApp/Components/Palette.h"

#include <QPainter>
#include <QPen>

#include <algorithm>

namespace varnet {

namespace {

void markUpdate(QImage& face) {
    QPainter painter(&face);
    painter.setRenderHint(QPainter::Antialiasing);
    const double size = face.width();
    const double radius = std::max(3.5, size * 0.2);
    const double rim = std::max(0.75, size / 24);
    const QPointF centre(size - radius, size - radius);
    painter.setPen(Qt::NoPen);
    // A clear rim keeps the disc apart from the flame on any panel.
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.drawEllipse(centre, radius + rim, radius + rim);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    // The flame is warm: a cool disc is seen at a glance.
    painter.setBrush(lightPalette().info);
    painter.drawEllipse(centre, radius, radius);
    painter.setPen(QPen(Qt::white, std::max(1.0, size / 16), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const double half = radius * 0.55;
    const QPointF tip = centre + QPointF(0, half);
    painter.drawLine(centre - QPointF(0, half), tip);
    painter.drawPolyline(
        QPolygonF{tip + QPointF(-half * 0.8, -half * 0.8), tip, tip + QPointF(half * 0.8, -half * 0.8)});
}

} // namespace

QImage trayFace(FlameExpression expression, int size, bool updateAvailable) {
    QImage face = mascotImage(expression, size, MascotStyle::bare);
    if (updateAvailable && !face.isNull()) markUpdate(face);
    return face;
}

} // namespace varnet
