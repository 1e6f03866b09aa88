#include "VarnetApp/Components/Charts/LineChartPainter.h"

#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace varnet {

namespace {

constexpr double lineWidth = 1.75;
constexpr float areaTop = .30F;
constexpr float areaBottom = .03F;
constexpr double labelLine = 15; // the height of a line of labels
constexpr double labelGap = 8;   // between the plot and the labels at its right
constexpr double timeGap = 5;    // between the plot and the labels under it
constexpr double bandHeight = 4;
constexpr double dotRadius = 2.75;
constexpr double dotRing = 2; // in the ground's tone, around the dot
constexpr double ruleAbove = 5;
constexpr double bubbleHeight = 24;
constexpr double bubblePadding = 9;
constexpr double bubbleRadius = 8;
constexpr int fewestGridLines = 3;

QRectF onPixels(const QRectF& box, double ratio) {
    const auto snap = [ratio](double v) { return std::round(v * ratio) / ratio; };
    return {QPointF(snap(box.left()), snap(box.top())), QPointF(snap(box.right()), snap(box.bottom()))};
}

class Painting {
public:
    Painting(QPainter& painter, const LineChart& chart, const std::vector<int>& drawable, QSizeF size,
             double ratio)
        : painter_(painter), chart_(chart), drawable_(drawable), size_(size), ratio_(ratio),
          scale_(lineScale(chart, size)), metrics_(chart.font) {}

    void all() {
        if (scale_.plot.width() < 1 || scale_.plot.height() < 1) return;
        painter_.setRenderHint(QPainter::Antialiasing);
        painter_.setFont(chart_.font);
        grid();
        line();
        bands(chart_.faintBands, chart_.tones.faintBand);
        bands(chart_.bands, chart_.tones.band);
        times();
        current();
    }

private:
    void grid() {
        const int lines = std::max(fewestGridLines, static_cast<int>(chart_.gridLabels.size()));
        for (int i = 0; i < lines; ++i) {
            const double y = scale_.plot.bottom() - scale_.plot.height() * i / (lines - 1);
            painter_.fillRect(onPixels({scale_.plot.left(), std::floor(y), scale_.plot.width(), 1}, ratio_),
                              chart_.tones.grid);
            if (i >= chart_.gridLabels.size()) continue;
            const QRectF box(scale_.plot.right(), y - labelLine / 2, size_.width() - scale_.plot.right(),
                             labelLine);
            write(box, chart_.gridLabels[i], Qt::AlignRight | Qt::AlignVCenter, chart_.tones.label);
        }
    }

    void line() {
        painter_.save();
        // Sideways only: the pen may stand half its width above a full value. What is of this moment keeps
        // all of its end.
        painter_.setClipRect(QRectF(scale_.plot.left(), 0, scale_.plot.width() + lineWidth, size_.height()),
                             Qt::IntersectClip);
        for (const std::span<const int> run :
             joinedRuns(chart_.points, drawable_, chart_.gap, chart_.starts)) {
            std::vector<QPointF> mapped;
            mapped.reserve(run.size());
            for (const int index : run)
                mapped.push_back(scale_.map(chart_.points[index]));
            drawRun(thinned(mapped, 1 / ratio_));
        }
        painter_.restore();
    }

    void drawRun(const std::vector<QPointF>& run) {
        if (run.size() == 1) {
            painter_.setPen(Qt::NoPen);
            painter_.setBrush(chart_.tones.line);
            painter_.drawEllipse(run.front(), lineWidth, lineWidth);
            return;
        }
        QPainterPath stroke(run.front());
        for (const QPointF point : std::span(run).subspan(1))
            stroke.lineTo(point);
        QPainterPath area = stroke;
        area.lineTo(run.back().x(), scale_.plot.bottom());
        area.lineTo(run.front().x(), scale_.plot.bottom());
        area.closeSubpath();
        QLinearGradient fall(0, scale_.plot.top(), 0, scale_.plot.bottom());
        QColor tone = chart_.tones.line;
        tone.setAlphaF(areaTop);
        fall.setColorAt(0, tone);
        tone.setAlphaF(areaBottom);
        fall.setColorAt(1, tone);
        painter_.fillPath(area, fall);
        painter_.strokePath(stroke,
                            QPen(chart_.tones.line, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    }

    void bands(const QList<QPointF>& times, const QColor& tone) {
        for (const QPointF band : times) {
            if (!std::isfinite(band.x()) || !std::isfinite(band.y())) continue;
            const double left = std::max(scale_.plot.left(), scale_.map({band.x(), 0}).x());
            const double right = std::min(scale_.plot.right(), scale_.map({band.y(), 0}).x());
            // A short one is still seen.
            if (right < left) continue;
            const QRectF box(left, scale_.plot.bottom() - bandHeight, std::max(right - left, 1.0),
                             bandHeight);
            painter_.fillRect(onPixels(box, ratio_), tone);
        }
    }

    void times() {
        const int count = static_cast<int>(chart_.timeLabels.size());
        for (int i = 0; i < count; ++i) {
            const double wide = std::ceil(metrics_.horizontalAdvance(chart_.timeLabels[i]));
            const double left =
                scale_.plot.left() + std::round(labelLeft(i, count, wide, scale_.plot.width()));
            write({left, scale_.plot.bottom() + timeGap, wide + 1, labelLine}, chart_.timeLabels[i],
                  Qt::AlignLeft | Qt::AlignVCenter, chart_.tones.label);
        }
    }

    void current() {
        if (chart_.current < 0 || chart_.current >= chart_.points.size()) return;
        const QPointF at = scale_.map(chart_.points[chart_.current]);
        if (!std::isfinite(at.x()) || at.x() < scale_.plot.left() - .5 || at.x() > scale_.plot.right() + .5)
            return;
        const double ruleTop = scale_.plot.top() - ruleAbove;
        painter_.fillRect(onPixels({std::floor(at.x()), ruleTop, 1, scale_.plot.bottom() - ruleTop}, ratio_),
                          chart_.tones.rule);
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(chart_.tones.ground);
        painter_.drawEllipse(at, dotRadius + dotRing, dotRadius + dotRing);
        painter_.setBrush(chart_.tones.line);
        painter_.drawEllipse(at, dotRadius, dotRadius);
        if (chart_.currentText.isEmpty()) return;
        // No wider than the plot: a long text is cut with an ellipsis.
        const double room = scale_.plot.width() - 2 * bubblePadding;
        const QString text = metrics_.elidedText(chart_.currentText, Qt::ElideRight, room);
        const double wide = std::ceil(metrics_.horizontalAdvance(text)) + 2 * bubblePadding;
        const QRectF box = onPixels(bubbleBox({wide, bubbleHeight}, std::round(at.x()), scale_.plot), ratio_);
        painter_.setPen(QPen(chart_.tones.bubbleLine, 1));
        painter_.setBrush(chart_.tones.bubble);
        painter_.drawRoundedRect(box.adjusted(.5, .5, -.5, -.5), bubbleRadius, bubbleRadius);
        write(box, text, Qt::AlignCenter, chart_.tones.bubbleText);
    }

    void write(const QRectF& box, const QString& text, Qt::Alignment alignment, const QColor& tone) {
        painter_.setPen(tone);
        painter_.drawText(box, static_cast<int>(alignment) | Qt::TextSingleLine | Qt::TextDontClip, text);
    }

    QPainter& painter_;
    const LineChart& chart_;
    const std::vector<int>& drawable_;
    QSizeF size_;
    double ratio_;
    LineScale scale_;
    QFontMetricsF metrics_;
};

} // namespace

LineScale lineScale(const LineChart& chart, QSizeF size) {
    const QFontMetricsF metrics(chart.font);
    double wide = 0;
    for (const QString& label : chart.gridLabels)
        wide = std::max(wide, metrics.horizontalAdvance(label));
    const double right = wide > 0 ? std::ceil(wide) + labelGap : 0;
    const double top = std::ceil(labelLine / 2);
    const double bottom = chart.timeLabels.isEmpty() ? top : timeGap + labelLine;
    return {.plot = QRectF(0, top, size.width() - right, size.height() - top - bottom),
            .from = chart.from,
            .to = chart.to,
            .low = chart.low,
            .high = chart.high};
}

void paintLineChart(QPainter& painter, const LineChart& chart, const std::vector<int>& drawable, QSizeF size,
                    double devicePixelRatio) {
    Painting(painter, chart, drawable, size, devicePixelRatio).all();
}

} // namespace varnet
