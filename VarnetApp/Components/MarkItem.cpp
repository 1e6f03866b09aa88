#include "VarnetApp/Components/MarkItem.h"

#include <QPainter>

namespace varnet {

void MarkItem::setDash(bool dash) {
    if (dash_ == dash) return;
    dash_ = dash;
    update();
    emit changed();
}

void MarkItem::setColor(const QColor& color) {
    if (color_ == color) return;
    color_ = color;
    update();
    emit changed();
}

void MarkItem::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->scale(width() / 18, height() / 18);
    painter->setPen(QPen(color_, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (dash_) {
        painter->drawLine(QPointF(5.5, 9), QPointF(12.5, 9));
        return;
    }
    painter->drawPolyline(QPolygonF({{5, 9.4}, {7.8, 12.1}, {13, 6.4}}));
}

} // namespace varnet
