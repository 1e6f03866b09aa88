#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QSize>

namespace varnet {

/// A light that falls off to nothing at its radius, squared. Computed and dithered pixel by pixel: a gradient
/// of so little alpha has too few steps and shows them as bands.
/// @param size pixels, at most 8192 a side; an empty or larger size gives a null image
/// @param centre pixels, may lie outside
/// @param strength the alpha at the centre, 0 to 1
QImage glowImage(QSize size, QPointF centre, double radius, const QColor& color, double strength);

} // namespace varnet
