#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <span>
#include <vector>

namespace varnet {

/// Where times and values of a line chart lie on screen. Values outside the range stay at its edge; times
/// outside theirs lie outside the plot.
struct LineScale {
    QRectF plot;
    double from = 0; ///< the time at the plot's left edge
    double to = 1;   ///< at its right edge
    double low = 0;  ///< the value at its lower edge
    double high = 100;

    /// A range of no width puts everything at its beginning.
    QPointF map(QPointF point) const;
    double timeAt(double x) const;
};

/// The points that can be drawn, by index: finite, and none before the one it follows.
std::vector<int> drawablePoints(std::span<const QPointF> points);

/// Points that belong together, as indices into the points.
/// @param drawable ascending, as above
/// @param gap two points further apart than this are not joined; 0 or less joins all
/// @param starts points that are not joined with the one before them, ascending
std::vector<std::span<const int>> joinedRuns(std::span<const QPointF> points, std::span<const int> drawable,
                                             double gap, std::span<const int> starts = {});

/// Thins a line, in pixels and ascending in x, to what can be seen of it: of every column the lowest and the
/// highest point in their order, and the line's two ends. A line with no more than one point a column stays
/// as it is.
/// @param column the width of a column, above 0
std::vector<QPointF> thinned(std::span<const QPointF> line, double column);

/// The drawable point nearest to a time, as an index into the points; of two equally near the earlier. -1
/// when nothing is drawable.
int nearestPoint(std::span<const QPointF> points, std::span<const int> drawable, double time);

/// Lays the bubble at the right of the rule, at its left where it would leave the plot, and inside the plot
/// where neither side has room.
QRectF bubbleBox(QSizeF bubble, double ruleX, const QRectF& plot);

/// The left edge of one of several labels spread over a width: the first begins at the left edge, the last
/// ends at the right edge, the others are centred on their places. A single label stands at the right.
double labelLeft(int index, int count, double labelWidth, double width);

} // namespace varnet
