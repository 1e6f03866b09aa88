#pragma once

#include "VarnetApp/Components/Charts/LineChartPainter.h"

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

#include <optional>
#include <vector>

namespace varnet {

/// A line over time with the area below it. Hovering, or the arrow keys while it has the focus, picks a point
/// (Home and End the outermost, Escape none); its text stands in a bubble. The item formats nothing.
class LineChartItem : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// x is a time in seconds on any clock (negative for "ago" does as well as a date), y a value. Ascending
    /// in time; a point that is not finite or goes back is left out, and never picked.
    Q_PROPERTY(QList<QPointF> points READ points WRITE setPoints NOTIFY pointsChanged)
    /// What the bubble says for each point, parallel to `points`; a point without a text has no bubble.
    Q_PROPERTY(QStringList labels READ labels WRITE setLabels NOTIFY labelsChanged)
    /// Seconds: points further apart are not joined. 0 joins all.
    Q_PROPERTY(double gap MEMBER gap_ NOTIFY changed)
    /// Points, by index and ascending, at which a line of its own begins.
    Q_PROPERTY(QList<int> starts MEMBER starts_ NOTIFY changed)
    /// The times at the two ends, on the clock of the points, and the values at the lower and the upper end.
    Q_PROPERTY(double from MEMBER from_ NOTIFY changed)
    Q_PROPERTY(double to MEMBER to_ NOTIFY changed)
    Q_PROPERTY(double low MEMBER low_ NOTIFY changed)
    Q_PROPERTY(double high MEMBER high_ NOTIFY changed)
    /// Texts at the grid lines from the lower end up, and under the plot from the left; both spread evenly.
    Q_PROPERTY(QStringList gridLabels MEMBER gridLabels_ NOTIFY changed)
    Q_PROPERTY(QStringList timeLabels MEMBER timeLabels_ NOTIFY changed)
    /// Times from x to y that are marked on the axis: in the band's tone, and in the faint one below it.
    Q_PROPERTY(QList<QPointF> bands MEMBER bands_ NOTIFY changed)
    Q_PROPERTY(QList<QPointF> faintBands MEMBER faintBands_ NOTIFY changed)

    Q_PROPERTY(QFont font MEMBER font_ NOTIFY changed)
    Q_PROPERTY(QColor lineColor MEMBER lineColor_ NOTIFY changed)
    Q_PROPERTY(QColor gridColor MEMBER gridColor_ NOTIFY changed)
    Q_PROPERTY(QColor labelColor MEMBER labelColor_ NOTIFY changed)
    Q_PROPERTY(QColor ruleColor MEMBER ruleColor_ NOTIFY changed)
    /// What the chart lies on; it rings the picked point.
    Q_PROPERTY(QColor groundColor MEMBER groundColor_ NOTIFY changed)
    Q_PROPERTY(QColor bubbleColor MEMBER bubbleColor_ NOTIFY changed)
    Q_PROPERTY(QColor bubbleLineColor MEMBER bubbleLineColor_ NOTIFY changed)
    Q_PROPERTY(QColor bubbleTextColor MEMBER bubbleTextColor_ NOTIFY changed)
    Q_PROPERTY(QColor bandColor MEMBER bandColor_ NOTIFY changed)
    Q_PROPERTY(QColor faintBandColor MEMBER faintBandColor_ NOTIFY changed)

    /// The picked point; -1 for none. An index that cannot be picked counts as none.
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentChanged)
    /// Its text, empty for none.
    Q_PROPERTY(QString currentText READ currentText NOTIFY currentChanged)
    /// The focus came by the keyboard, so that its ring is due.
    Q_PROPERTY(bool focusVisible READ focusVisible NOTIFY focusVisibleChanged)

public:
    explicit LineChartItem(QQuickItem* parent = nullptr);

    const QList<QPointF>& points() const { return points_; }
    void setPoints(const QList<QPointF>& points);
    const QStringList& labels() const { return labels_; }
    void setLabels(const QStringList& labels);
    int currentIndex() const { return current_; }
    void setCurrentIndex(int index);
    QString currentText() const { return labels_.value(current_); }
    bool focusVisible() const { return focusVisible_; }

    void paint(QPainter* painter) override;

signals:
    void pointsChanged();
    void labelsChanged();
    void changed();
    void currentChanged();
    void focusVisibleChanged();

protected:
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverMoveEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    LineChart chart() const;
    void pickAt(double x);
    void step(int by);
    void setFocusVisible(bool visible);

    QList<QPointF> points_;
    QStringList labels_;
    std::vector<int> drawable_; ///< of points_
    int current_ = -1;
    std::optional<double> pointer_; ///< x of the pointer while it is over the item
    bool focusVisible_ = false;

    double gap_ = 0;
    QList<int> starts_;
    double from_ = 0;
    double to_ = 1;
    double low_ = 0;
    double high_ = 100;
    QStringList gridLabels_;
    QStringList timeLabels_;
    QList<QPointF> bands_;
    QList<QPointF> faintBands_;

    QFont font_;
    QColor lineColor_;
    QColor gridColor_;
    QColor labelColor_;
    QColor ruleColor_;
    QColor groundColor_;
    QColor bubbleColor_;
    QColor bubbleLineColor_;
    QColor bubbleTextColor_;
    QColor bandColor_;
    QColor faintBandColor_;
};

} // namespace varnet
