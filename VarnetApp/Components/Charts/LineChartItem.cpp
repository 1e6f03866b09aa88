#include "VarnetApp/Components/Charts/LineChartItem.h"

#include "VarnetApp/Components/PainterScale.h"

#include <QHoverEvent>
#include <QKeyEvent>

#include <algorithm>

namespace varnet {

LineChartItem::LineChartItem(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAcceptHoverEvents(true);
    setActiveFocusOnTab(true);
    connect(this, &LineChartItem::changed, this, [this] { update(); });
    connect(this, &LineChartItem::currentChanged, this, [this] { update(); });
}

void LineChartItem::setPoints(const QList<QPointF>& points) {
    if (points_ == points) return;
    points_ = points;
    drawable_ = drawablePoints(points_);
    update();
    emit pointsChanged();
    // Time has moved on under a pointer that has not; what the keys picked stays at its place in the list.
    if (pointer_)
        pickAt(*pointer_);
    else if (!std::ranges::binary_search(drawable_, current_))
        setCurrentIndex(-1);
    else
        emit currentChanged();
}

void LineChartItem::setLabels(const QStringList& labels) {
    if (labels_ == labels) return;
    labels_ = labels;
    emit labelsChanged();
    if (current_ >= 0) emit currentChanged();
}

void LineChartItem::setCurrentIndex(int index) {
    const int next = std::ranges::binary_search(drawable_, index) ? index : -1;
    if (current_ == next) return;
    current_ = next;
    emit currentChanged();
}

LineChart LineChartItem::chart() const {
    return {.points = points_,
            .gap = gap_,
            .starts = starts_,
            .from = from_,
            .to = to_,
            .low = low_,
            .high = high_,
            .gridLabels = gridLabels_,
            .timeLabels = timeLabels_,
            .bands = bands_,
            .faintBands = faintBands_,
            .font = font_,
            .tones = {.line = lineColor_,
                      .grid = gridColor_,
                      .label = labelColor_,
                      .rule = ruleColor_,
                      .ground = groundColor_,
                      .bubble = bubbleColor_,
                      .bubbleLine = bubbleLineColor_,
                      .bubbleText = bubbleTextColor_,
                      .band = bandColor_,
                      .faintBand = faintBandColor_},
            .current = current_,
            .currentText = currentText()};
}

void LineChartItem::paint(QPainter* painter) {
    paintLineChart(*painter, chart(), drawable_, size(), painterScale(*painter));
}

void LineChartItem::pickAt(double x) {
    const LineScale scale = lineScale(chart(), size());
    setCurrentIndex(nearestPoint(points_, drawable_, scale.timeAt(x)));
}

void LineChartItem::step(int by) {
    if (drawable_.empty()) return;
    const auto place = std::ranges::lower_bound(drawable_, current_);
    const auto count = static_cast<int>(drawable_.size());
    // The first key picks the newest point, from where it goes on.
    const int next = current_ < 0 ? count - 1 : static_cast<int>(place - drawable_.begin()) + by;
    setCurrentIndex(drawable_[static_cast<std::size_t>(std::clamp(next, 0, count - 1))]);
}

void LineChartItem::hoverEnterEvent(QHoverEvent* event) {
    hoverMoveEvent(event);
}

void LineChartItem::hoverMoveEvent(QHoverEvent* event) {
    pointer_ = event->position().x();
    pickAt(*pointer_);
}

void LineChartItem::hoverLeaveEvent(QHoverEvent*) {
    pointer_.reset();
    setCurrentIndex(-1);
}

void LineChartItem::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
        step(-1);
        break;
    case Qt::Key_Right:
        step(1);
        break;
    case Qt::Key_Home:
        if (!drawable_.empty()) setCurrentIndex(drawable_.front());
        break;
    case Qt::Key_End:
        if (!drawable_.empty()) setCurrentIndex(drawable_.back());
        break;
    case Qt::Key_Escape:
        // With nothing picked the key is for whoever stands around the chart.
        if (current_ < 0) return event->ignore();
        setCurrentIndex(-1);
        break;
    default:
        event->ignore();
        return;
    }
    setFocusVisible(true);
    event->accept();
}

void LineChartItem::focusInEvent(QFocusEvent* event) {
    QQuickPaintedItem::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    setFocusVisible(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                    reason == Qt::ShortcutFocusReason);
}

void LineChartItem::focusOutEvent(QFocusEvent* event) {
    QQuickPaintedItem::focusOutEvent(event);
    setFocusVisible(false);
    if (!pointer_) setCurrentIndex(-1);
}

void LineChartItem::setFocusVisible(bool visible) {
    if (focusVisible_ == visible) return;
    focusVisible_ = visible;
    emit focusVisibleChanged();
}

} // namespace varnet
