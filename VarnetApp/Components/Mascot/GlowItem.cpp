#include "VarnetApp/Components/Mascot/GlowItem.h"

#include "VarnetApp/Components/Mascot/Glow.h"
#include "VarnetApp/Components/PainterScale.h"

#include <QPainter>

namespace varnet {

void GlowItem::paint(QPainter* painter) {
    const double ratio = painterScale(*painter);
    const QSize pixels(qCeil(width() * ratio), qCeil(height() * ratio));
    const QImage light = glowImage(pixels, center_ * ratio, radius_ * ratio, color_, strength_);
    if (light.isNull()) return;
    QBrush brush(light);
    brush.setTransform(QTransform::fromScale(1 / ratio, 1 / ratio));
    // A filled path has smooth corners where a clip has none.
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(brush);
    painter->drawRoundedRect(QRectF(0, 0, width(), height()), cornerRadius_, cornerRadius_);
}

} // namespace varnet
