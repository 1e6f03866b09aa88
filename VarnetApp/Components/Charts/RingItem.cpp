#include "VarnetApp/Components/Charts/RingItem.h"

#include <QPainter>

#include <algorithm>

namespace varnet {

RingItem::RingItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &RingItem::changed, this, [this] { update(); });
}

void RingItem::paint(QPainter* painter) {
    const double side = std::min(width(), height()) - stroke_;
    if (!(side > 0) || !(stroke_ > 0)) return;
    const QRectF box((width() - side) / 2, (height() - side) / 2, side, side);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(trackColor_, stroke_));
    painter->drawEllipse(box);
    if (!(value_ > 0)) return;
    painter->setPen(QPen(color_, stroke_, Qt::SolidLine, Qt::RoundCap));
    // Sixteenths of a degree, counted against the clock.
    painter->drawArc(box, 90 * 16, -qRound(std::min(value_, 1.0) * 360 * 16));
}

} // namespace varnet
