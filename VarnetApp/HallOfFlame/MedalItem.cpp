#include "VarnetApp/HallOfFlame/MedalItem.h"

#include "VarnetApp/Components/IconItem.h"

#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace varnet {

namespace {

constexpr int side = 56;
constexpr double line = 1.5;
constexpr float fill = 0.22F;
/// Of the medal's width.
constexpr double iconShare = 0.43;

QPolygonF octagon(QPointF centre, double radius) {
    QPolygonF corners;
    for (int corner = 0; corner < 8; ++corner) {
        const double angle = std::numbers::pi / 8 * (2 * corner + 1);
        corners << centre + QPointF(std::cos(angle), std::sin(angle)) * radius;
    }
    return corners;
}

} // namespace

MedalItem::MedalItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setImplicitSize(side, side);
}

void MedalItem::paint(QPainter* painter) {
    const double size = std::min(width(), height());
    const QPointF centre(width() / 2, height() / 2);
    // Flat sides touch the box.
    const double radius = (size - line) / 2 / std::cos(std::numbers::pi / 8);
    painter->setRenderHint(QPainter::Antialiasing);
    QPen pen(tone_, line, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
    QColor inside = tone_;
    inside.setAlphaF(earned_ ? fill : 0.0F);
    if (!earned_) pen.setDashPattern({2.6, 2.6});
    painter->setPen(pen);
    painter->setBrush(inside);
    painter->drawPolygon(octagon(centre, radius));
    const int icon = static_cast<int>(std::lround(size * iconShare));
    paintIcon(*painter, icon_, tone_, centre - QPointF(icon, icon) / 2, icon);
}

} // namespace varnet
