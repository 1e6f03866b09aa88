#include "VarnetApp/Previews/MarketingPictures.h"

#include "VarnetApp/Components/Palette.h"
#include "VarnetApp/Components/Typeface.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/ShareCards/CardDrawing.h"

#include <QPainter>
#include <QPainterPath>
#include <QStringList>

#include <algorithm>

namespace varnet {

namespace {

// The window stands a little below the picture's lower edge, as one that is being pulled up.
constexpr double windowTop = 288;
constexpr double windowRadius = 16;
constexpr double windowWidth = 1040 * marketingScale;
constexpr double left = (1600 - windowWidth) / 2.0;
constexpr double right = left + windowWidth;
constexpr double mascotSide = 200;
constexpr double smallStep = 37; ///< from one line below the headline to the next
constexpr double wordsWidth = right - left - mascotSide - 48;

/// The largest size at which every line fits.
QFont displayFor(const QStringList& lines) {
    QFont display;
    for (const int pixels : {60, 54, 48, 42}) {
        display = typeface(pixels, QFont::DemiBold, pixels * -0.02);
        const bool fits = std::ranges::all_of(
            lines, [&](const QString& line) { return CardDrawing::width(line, display) <= wordsWidth; });
        if (fits) break;
    }
    return display;
}

void drawWindow(QPainter& painter, const QImage& window) {
    const Palette& palette = darkPalette();
    const QRectF frame(QPointF(left, windowTop), QSizeF(window.size()));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    // A shadow of rings: each a little fainter and wider than the one inside it.
    for (int ring = 40; ring > 0; --ring) {
        painter.setBrush(QColor(0, 0, 0, 3));
        painter.drawRoundedRect(frame.adjusted(-ring, -ring / 2.0, ring, ring * 1.5), windowRadius + ring,
                                windowRadius + ring);
    }
    QPainterPath shape;
    shape.addRoundedRect(frame, windowRadius, windowRadius);
    QImage pixels = window;
    pixels.setDevicePixelRatio(1);
    QBrush glass(pixels);
    glass.setTransform(QTransform::fromTranslate(frame.x(), frame.y()));
    painter.fillPath(shape, glass);
    painter.strokePath(shape, QPen(palette.controlLine, 1));
    painter.restore();
}

} // namespace

std::vector<MarketingPicture> marketingPictures() {
    using enum FlameExpression;
    return {
        {"marketing-overview", "overview", "Your AI finished.\nWhat’s still running?",
         "Real readings. Unsolicited opinions.", smug},
        {"marketing-servers", "detail-server", "Local monitoring",
         "Find apps and servers using your Mac. Stop what you don’t need.", suspicious},
        {"marketing-disk", "disk-map", "See what fills your disk.",
         "Scan once, then walk through every folder by its size. Nothing is moved or changed.", focused},
        {"marketing-hall", "hall", "Your week. Lightly roasted.", "Your localhost has a neighbourhood watch.",
         delighted},
    };
}

QImage paintMarketing(const MarketingPicture& picture, const QImage& window,
                      const AppLocalization& localization) {
    if (window.isNull()) return {};
    QImage image(marketingSize, QImage::Format_RGB32);
    if (image.isNull()) return image;
    const Palette& palette = darkPalette();
    QPainter painter(&image);
    const QRectF flame(right - mascotSide, 50, mascotSide, mascotSide);
    CardDrawing drawing(painter, marketingSize, flame.center(), 760);
    drawing.mascot(flame, picture.expression);

    const QStringList lines = localization.text(picture.headline).split('\n');
    const QFont display = displayFor(lines);
    const double step = display.pixelSize() * 1.14;
    const QFont small = typeface(26, QFont::Normal);
    const QStringList below = CardDrawing::wrapped(localization.text(picture.line), small, wordsWidth, 2);
    // All of it as one block, centred beside the flame.
    double y = flame.center().y() + display.pixelSize() * 0.92 -
               (step * static_cast<double>(lines.size()) + smallStep * static_cast<double>(below.size())) / 2;
    for (const QString& line : lines) {
        drawing.text(line, {left, y}, display, palette.text);
        y += step;
    }
    y -= step - display.pixelSize() * 0.3 - smallStep;
    for (const QString& line : below) {
        drawing.text(line, {left, y}, small, palette.muted);
        y += smallStep;
    }
    drawWindow(painter, window);
    return image;
}

} // namespace varnet
