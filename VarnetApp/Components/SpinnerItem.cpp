#include "VarnetApp/Components/SpinnerItem.h"

#include <QPainter>

#include <cmath>

namespace varnet {

void SpinnerItem::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    const double scale = width() / 20;
    painter->scale(scale, scale);
    if (dots_) {
        painter->setPen(Qt::NoPen);
        for (int i = 0; i < 3; ++i) {
            painter->setBrush(i < filled_ ? color_ : track_);
            painter->drawEllipse(QPointF(3.5 + 6.5 * i, 10), 2.25, 2.25);
        }
        return;
    }
    const QRectF ring(2.5, 2.5, 15, 15);
    painter->setPen(QPen(track_, 2.5));
    painter->drawEllipse(ring);
    painter->setPen(QPen(color_, 2.5, Qt::SolidLine, Qt::RoundCap));
    const double start = 90 - 360 * (turn_ - std::floor(turn_));
    painter->drawArc(ring, static_cast<int>(start * 16), -100 * 16);
}

} // namespace varnet
