#include "VarnetApp/Components/FigureItem.h"

#include "VarnetApp/Components/Theme.h"

#include <QFontMetricsF>
#include <QHash>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace varnet {

namespace {

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

/// Calls `use(piece, width, shift)` for each digit and each run of anything else, from left to right; `shift`
/// centres a digit in its cell.
template <typename Use>
void forEachPiece(const QFont& font, const QString& text, Use use) {
    const QFontMetricsF metrics(font);
    const double cell = digitCell(font);
    for (qsizetype begin = 0; begin < text.size();) {
        qsizetype end = begin + 1;
        if (!isDigit(text[begin]))
            while (end < text.size() && !isDigit(text[end]))
                ++end;
        const QString piece = text.mid(begin, end - begin);
        const double natural = metrics.horizontalAdvance(piece);
        const double width = isDigit(text[begin]) ? cell : natural;
        use(piece, width, (width - natural) / 2);
        begin = end;
    }
}

struct Line {
    int height;
    double nudge;
};

// The same lines as those of the words beside the number.
Line lineOf(const QFont& font) {
    const Theme& theme = Theme::shared();
    if (font.pixelSize() >= 28) return {Theme::displayLine(), theme.displayNudge()};
    if (font.pixelSize() >= 17) return {Theme::titleLine(), theme.titleNudge()};
    if (font.pixelSize() >= 13) return {Theme::bodyLine(), theme.bodyNudge()};
    return {Theme::captionLine(), theme.captionNudge()};
}

} // namespace

double digitCell(const QFont& font) {
    static QHash<QString, double> cells;
    const QString key = font.key();
    const auto known = cells.constFind(key);
    if (known != cells.constEnd()) return *known;
    const QFontMetricsF metrics(font);
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return *cells.insert(key, widest);
}

double figureWidth(const QFont& font, const QString& text) {
    double width = 0;
    forEachPiece(font, text, [&width](const QString&, double pieceWidth, double) { width += pieceWidth; });
    return width;
}

void paintFigure(QPainter& painter, const QFont& font, const QColor& color, QPointF at, const QString& text) {
    painter.setFont(font);
    painter.setPen(color);
    forEachPiece(font, text, [&](const QString& piece, double width, double shift) {
        painter.drawText(at + QPointF(shift, 0), piece);
        at.rx() += width;
    });
}

FigureItem::FigureItem(QQuickItem* parent) : QQuickPaintedItem(parent), font_(Theme::shared().body()) {
    measure();
}

void FigureItem::setText(const QString& text) {
    if (text_ == text) return;
    text_ = text;
    measure();
    emit changed();
}

void FigureItem::setFont(const QFont& font) {
    if (font_ == font) return;
    font_ = font;
    measure();
    emit changed();
}

void FigureItem::setColor(const QColor& color) {
    if (color_ == color) return;
    color_ = color;
    update();
    emit changed();
}

void FigureItem::setAlignment(Alignment alignment) {
    if (alignment_ == alignment) return;
    alignment_ = alignment;
    update();
    emit changed();
}

void FigureItem::measure() {
    const Line line = lineOf(font_);
    textWidth_ = figureWidth(font_, text_);
    baseline_ = line.nudge + QFontMetricsF(font_).ascent();
    setImplicitSize(std::ceil(textWidth_), line.height);
    setBaselineOffset(baseline_);
    update();
}

void FigureItem::paint(QPainter* painter) {
    const double left = alignment_ == Alignment::Right ? width() - textWidth_ : 0;
    paintFigure(*painter, font_, color_, {left, baseline_}, text_);
}

} // namespace varnet
