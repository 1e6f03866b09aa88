#include "VarnetApp/ShareCards/CardDrawing.h"

#include "VarnetApp/Components/Mascot/Glow.h"
#include "VarnetApp/Components/Mascot/MascotPainter.h"
#include "VarnetApp/Components/PainterScale.h"
#include "VarnetApp/Components/Palette.h"
#include "VarnetApp/Components/Typeface.h"

#include <QFontMetricsF>

#include <cmath>

namespace varnet {

namespace {

constexpr double lightStrength = 0.36;
constexpr QColor lightColor{0xFF, 0x7A, 0x45};

} // namespace

CardDrawing::CardDrawing(QPainter& painter, QSize size, QPointF light, double radius)
    : painter_(painter), scale_(painterScale(painter)) {
    painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                            QPainter::SmoothPixmapTransform);
    painter_.fillRect(QRectF(QPointF(), size), darkPalette().bg);
    const QSize pixels(static_cast<int>(std::ceil(size.width() * scale_)),
                       static_cast<int>(std::ceil(size.height() * scale_)));
    const QImage glow = glowImage(pixels, light * scale_, radius * scale_, lightColor, lightStrength);
    painter_.drawImage(QRectF(QPointF(), QSizeF(pixels) / scale_), glow);
}

void CardDrawing::text(const QString& words, QPointF baseline, const QFont& font, const QColor& color) {
    QFont smooth = font;
    smooth.setStyleStrategy(QFont::NoSubpixelAntialias);
    painter_.setFont(smooth);
    painter_.setPen(color);
    painter_.drawText(baseline, words);
}

void CardDrawing::textToTheLeft(const QString& words, QPointF baseline, const QFont& font,
                                const QColor& color) {
    text(words, baseline - QPointF(width(words, font), 0), font, color);
}

void CardDrawing::brand(const QString& kind, QPointF baseline, int pixels) {
    const QFont strong = typeface(pixels, QFont::Bold, pixels * 0.075);
    const QFont plain = typeface(pixels, QFont::Medium, pixels * 0.065);
    const QString name = QStringLiteral("VARNET");
    text(name, baseline, strong, darkPalette().text);
    text(kind, baseline + QPointF(width(name, strong) + pixels * 0.55, 0), plain, darkPalette().muted);
}

void CardDrawing::horizontalRule(double from, double to, double y) {
    painter_.fillRect(QRectF(from, y, to - from, 1), darkPalette().hairline);
}

void CardDrawing::verticalRule(double x, double from, double to) {
    painter_.fillRect(QRectF(x, from, 1, to - from), darkPalette().hairline);
}

void CardDrawing::dot(QPointF corner, double side, const QColor& color) {
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(color);
    painter_.drawRoundedRect(QRectF(corner, QSizeF(side, side)), side * 0.3, side * 0.3);
}

void CardDrawing::tag(const QString& words, QPointF right, int pixels) {
    const QFont font = typeface(pixels, QFont::DemiBold);
    const double padding = pixels * 0.6;
    const QRectF box(right.x() - width(words, font) - 2 * padding, right.y() - pixels * 1.3,
                     width(words, font) + 2 * padding, pixels * 1.8);
    painter_.setPen(QPen(darkPalette().ember, 1.5));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRoundedRect(box, box.height() / 2, box.height() / 2);
    text(words, {box.left() + padding, right.y()}, font, darkPalette().ember);
}

void CardDrawing::mascot(const QRectF& box, FlameExpression expression) {
    paintMascot(painter_, box, expression, scale_);
}

QStringList CardDrawing::wrapped(const QString& words, const QFont& font, double width, int most) {
    QStringList lines;
    QString line;
    const QStringList all = words.split(' ', Qt::SkipEmptyParts);
    for (qsizetype at = 0; at < all.size(); ++at) {
        const QString longer = line.isEmpty() ? all[at] : line + ' ' + all[at];
        const bool fits = CardDrawing::width(longer, font) <= width;
        if (fits || line.isEmpty()) {
            line = longer;
            continue;
        }
        if (lines.size() + 1 == most) {
            const QStringList rest = all.mid(at);
            line += ' ' + rest.join(' ');
            break;
        }
        lines.append(line);
        line = all[at];
    }
    if (!line.isEmpty()) lines.append(line);
    for (QString& one : lines)
        one = elided(one, font, width);
    return lines;
}

double CardDrawing::width(const QString& words, const QFont& font) {
    return QFontMetricsF(font).horizontalAdvance(words);
}

QString CardDrawing::sentences(const QStringList& parts) {
    QString all;
    for (const QString& part : parts) {
        if (!all.isEmpty()) all += all.endsWith('.') || all.endsWith('?') || all.endsWith('!') ? " " : ". ";
        all += part;
    }
    return all;
}

QString CardDrawing::elided(const QString& words, const QFont& font, double width) {
    return QFontMetricsF(font).elidedText(words, Qt::ElideRight, width);
}

} // namespace varnet
