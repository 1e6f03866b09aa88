#include "VarnetApp/Components/RoundBoxItem.h"

#include <QPainter>

#include <algorithm>

namespace varnet {

void RoundBoxItem::paint(QPainter* painter) {
    painter->setRenderHint(QPainter::Antialiasing);
    const QRectF box(0, 0, width(), height());
    const double corner = std::min({radius_, box.width() / 2, box.height() / 2});
    const double inset = lineWidth_ / 2;
    painter->setPen(lineWidth_ > 0 ? QPen(lineColor_, lineWidth_) : QPen(Qt::NoPen));
    painter->setBrush(color_);
    painter->drawRoundedRect(box.adjusted(inset, inset, -inset, -inset), std::max(0.0, corner - inset),
                             std::max(0.0, corner - inset));
}

} // namespace varnet
