#include "VarnetApp/Components/Mascot/Glow.h"

#include <algorithm>
#include <cmath>

namespace varnet {

namespace {

constexpr int largest = 8192;

/// Between 0 and 1, even over any small neighbourhood and without a visible pattern.
double threshold(int x, int y) {
    const double inner = .06711056 * x + .00583715 * y;
    const double outer = 52.9829189 * (inner - std::floor(inner));
    return outer - std::floor(outer);
}

} // namespace

QImage glowImage(QSize size, QPointF centre, double radius, const QColor& color, double strength) {
    if (size.isEmpty() || size.width() > largest || size.height() > largest) return {};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return image;
    image.fill(Qt::transparent);
    if (!(radius > 0) || !(strength > 0)) return image;
    const double peak = 255 * std::min(strength, 1.0);
    const int firstRow = std::clamp(static_cast<int>(std::floor(centre.y() - radius)), 0, size.height());
    const int lastRow = std::clamp(static_cast<int>(std::ceil(centre.y() + radius)), firstRow, size.height());
    const int firstColumn = std::clamp(static_cast<int>(std::floor(centre.x() - radius)), 0, size.width());
    const int lastColumn =
        std::clamp(static_cast<int>(std::ceil(centre.x() + radius)), firstColumn, size.width());
    for (int y = firstRow; y < lastRow; ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        const double dy = y + .5 - centre.y();
        for (int x = firstColumn; x < lastColumn; ++x) {
            const double dx = x + .5 - centre.x();
            const double left = 1 - std::sqrt(dx * dx + dy * dy) / radius;
            if (left <= 0) continue;
            const double alpha = peak * left * left;
            // One threshold for all channels keeps every colour at or below its alpha.
            const double dither = threshold(x, y);
            const auto step = [&](double part) { return static_cast<int>(alpha * part + dither); };
            row[x] = qRgba(step(static_cast<double>(color.redF())), step(static_cast<double>(color.greenF())),
                           step(static_cast<double>(color.blueF())), step(1));
        }
    }
    return image;
}

} // namespace varnet
