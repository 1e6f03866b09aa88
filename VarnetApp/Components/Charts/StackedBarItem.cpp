#include "VarnetApp/Components/Charts/StackedBarItem.h"

#include "VarnetApp/Components/Charts/BarGeometry.h"

#include <QPainter>

namespace varnet {

StackedBarItem::StackedBarItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    connect(this, &StackedBarItem::changed, this, [this] { update(); });
}

void StackedBarItem::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(trackColor_);
    painter->drawRoundedRect(QRectF(0, 0, width(), height()), radius_, radius_);
    for (const BarSegment& segment : stackedSegments(values_, static_cast<int>(width()))) {
        if (segment.index >= colors_.size()) continue;
        painter->setBrush(colors_[segment.index]);
        painter->drawRoundedRect(QRectF(segment.x, 0, segment.width, height()), radius_, radius_);
    }
}

} // namespace varnet
