#pragma once

#include "VarnetCore/Flame/FlameExpression.h"

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QRectF>

namespace varnet {

enum class MascotStyle { bare, tile, symbolic };

/// Paints the mascot into the largest square in the middle of the box; nothing leaves the box. How much is
/// drawn follows from the device pixels that the square has, so that it reads at 16 as at 512.
/// @param devicePixelRatio device pixels of one unit of the painter
void paintMascot(QPainter& painter, const QRectF& box, FlameExpression expression,
                 double devicePixelRatio = 1);

/// A moment of the change from one mood to another: the body flows over where both have the same build, the
/// eyes blink, and the Lick shrinks away and grows again as the new one. The little sizes cut at the half.
/// @param progress 0 is `from`, 1 is `to`
void paintMascotChange(QPainter& painter, const QRectF& box, FlameExpression from, FlameExpression to,
                       double progress, double devicePixelRatio = 1);

/// The flame in one colour with its eyes left open, for trays and menus that tint their icons.
void paintSymbolicMascot(QPainter& painter, const QRectF& box, FlameExpression expression,
                         const QColor& color, double devicePixelRatio = 1);

/// The application's icon: the flame on its dark tile.
void paintFlameTile(QPainter& painter, const QRectF& box, FlameExpression expression,
                    double devicePixelRatio = 1);

/// A square premultiplied image on a transparent ground; the symbolic style is black.
/// @param devicePixels 1 to 4096; outside that the image is null
QImage mascotImage(FlameExpression expression, int devicePixels, MascotStyle style);

} // namespace varnet
