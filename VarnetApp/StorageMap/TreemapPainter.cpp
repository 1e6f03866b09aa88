#include "VarnetApp/StorageMap/TreemapPainter.h"

#include "VarnetApp/Components/FigureItem.h"
#include "VarnetApp/Components/IconItem.h"
#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/StorageMap/MapLooks.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace varnet {

namespace {

/// A type style: its font and where its letters stand in a line.
struct Style {
    QFont font;
    int line;
    double nudge;
};

Style strongStyle() {
    return {Theme::shared().strong(), Theme::bodyLine(), Theme::shared().bodyNudge()};
}
Style captionStyle() {
    return {Theme::shared().caption(), Theme::captionLine(), Theme::shared().captionNudge()};
}
Style titleStyle() {
    return {Theme::shared().title(), Theme::titleLine(), Theme::shared().titleNudge()};
}

class TilePainter {
public:
    TilePainter(QPainter& painter, const Palette& palette, const TreemapCell& cell, bool lit)
        : painter_(painter), palette_(palette), cell_(cell), frame_(cell.frame), lit_(lit) {}

    void paint() {
        ground();
        switch (cell_.label.words) {
        case TileWords::none:
            break;
        case TileWords::name:
            words(captionStyle(), palette_.text, 6, nameTop(), cell_.title, frame_.width() - 12);
            break;
        case TileWords::nameAndSize:
            words(strongStyle(), palette_.text, 8, 5, cell_.title, frame_.width() - 16);
            figure(captionStyle(), quiet(), 8, 24, cell_.figure);
            break;
        case TileWords::full:
            full();
            break;
        case TileWords::head:
            head();
            break;
        }
    }

private:
    void ground() {
        const bool head = cell_.label.words == TileWords::head;
        const QColor tone = MapLooks::toneOf(palette_, cell_.tone);
        const QColor fill = head ? palette_.surface : tileOf(palette_, tone);
        const QColor line = head ? palette_.controlLine : tileLineOf(palette_, tone);
        const int shorter = std::min(frame_.width(), frame_.height());
        const QColor shownFill = lit_ ? mixed(fill, palette_.text, 0.08) : fill;
        if (shorter < 4) {
            painter_.fillRect(frame_, shownFill);
            return;
        }
        painter_.setPen(QPen(lit_ ? mixed(line, palette_.text, 0.4) : line, 1));
        painter_.setBrush(shownFill);
        const double corner = std::min(7.5, shorter / 4.0);
        painter_.drawRoundedRect(QRectF(frame_).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    }

    /// Quiet words on a hue; a tile that is lit needs a little more.
    QColor quiet() const { return lit_ ? mixed(palette_.muted, palette_.text, 0.3) : palette_.muted; }
    QColor subtitleInk() const {
        return cell_.partial ? mixed(palette_.warn, palette_.text, palette_.dark ? 0.1 : 0.3) : quiet();
    }
    int nameTop() const { return frame_.height() < 32 ? (frame_.height() - Theme::captionLine()) / 2 : 5; }

    void full() {
        const int room = frame_.width() - 24;
        const QColor tone = MapLooks::toneOf(palette_, cell_.tone);
        paintIcon(painter_, cell_.icon, tileInkOf(palette_, tone), frame_.topLeft() + QPointF(12, 12), 20);
        words(strongStyle(), palette_.text, 12, 36, cell_.title, room);
        if (cell_.label.subtitleLines > 0) paragraph(12, 56, room);
        if (cell_.label.largeFigure) {
            figure(titleStyle(), palette_.text, 12, frame_.height() - 34, cell_.figure);
        } else {
            figure(captionStyle(), quiet(), 12, frame_.height() - 25, cell_.figure);
        }
    }

    void head() {
        const bool wide = frame_.width() >= TileLabel::wideHead;
        const int inset = wide ? 12 : 8;
        const int room = frame_.width() - 2 * inset;
        if (wide) {
            const Style strong = strongStyle();
            const int figureRoom = static_cast<int>(figureWidth(strong.font, cell_.figure)) + 1;
            figure(strong, palette_.text, frame_.width() - inset - figureRoom, 7, cell_.figure);
            words(strong, palette_.text, inset, 7, cell_.title, room - figureRoom - 12);
            words(captionStyle(), subtitleInk(), inset, 26, cell_.subtitle, room);
        } else {
            words(strongStyle(), palette_.text, inset, 7, cell_.title, room);
            figure(captionStyle(), quiet(), inset, 26, cell_.figure);
        }
        for (const TreemapPartCell& part : cell_.parts)
            paintPart(part);
    }

    void paintPart(const TreemapPartCell& part) {
        const QColor fill = MapLooks::bucketFill(palette_, part.bucket);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(lit_ ? mixed(fill, palette_.text, 0.08) : fill);
        const double corner = std::min({4.0, part.frame.width() / 4.0, part.frame.height() / 4.0});
        painter_.drawRoundedRect(part.frame, corner, corner);
        const QPoint at = part.frame.topLeft() - frame_.topLeft();
        int y = at.y() + 5;
        if (!part.title.isEmpty()) {
            words(captionStyle(), palette_.text, at.x() + 8, y, part.title, part.frame.width());
            y += 16;
        }
        if (!part.figure.isEmpty()) figure(captionStyle(), palette_.text, at.x() + 8, y, part.figure);
    }

    void words(const Style& style, const QColor& ink, int x, int y, const QString& text, int room) {
        if (text.isEmpty() || room <= 0) return;
        const QFontMetricsF metrics(style.font);
        painter_.setFont(style.font);
        painter_.setPen(ink);
        painter_.drawText(frame_.topLeft() + QPointF(x, y + style.nudge + metrics.ascent()),
                          metrics.elidedText(text, Qt::ElideRight, room));
    }

    /// The subtitle on as many lines as the tile allows, broken between words.
    void paragraph(int x, int y, int room) {
        const Style style = captionStyle();
        const QFontMetricsF metrics(style.font);
        QString rest = cell_.subtitle;
        for (int left = cell_.label.subtitleLines; left > 1 && metrics.horizontalAdvance(rest) > room;
             --left) {
            qsizetype end = -1;
            for (qsizetype blank = rest.indexOf(' '); blank > 0; blank = rest.indexOf(' ', blank + 1)) {
                if (metrics.horizontalAdvance(rest.left(blank)) > room) break;
                end = blank;
            }
            if (end < 0) break;
            words(style, subtitleInk(), x, y, rest.left(end), room);
            rest = rest.mid(end + 1);
            y += style.line + 1;
        }
        words(style, subtitleInk(), x, y, rest, room);
    }

    void figure(const Style& style, const QColor& ink, int x, int y, const QString& text) {
        const double ascent = QFontMetricsF(style.font).ascent();
        paintFigure(painter_, style.font, ink, frame_.topLeft() + QPointF(x, y + style.nudge + ascent), text);
    }

    QPainter& painter_;
    const Palette& palette_;
    const TreemapCell& cell_;
    const QRect frame_;
    const bool lit_;
};

} // namespace

void paintTile(QPainter& painter, const Palette& palette, const TreemapCell& cell, bool lit) {
    if (!cell.frame.isEmpty()) TilePainter(painter, palette, cell, lit).paint();
}

} // namespace varnet
