#include "VarnetApp/Components/Charts/LineGeometry.h"

#include <algorithm>
#include <cmath>

namespace varnet {

namespace {

constexpr double besideRule = 8;
constexpr double abovePlot = 3;

double share(double value, double from, double to) {
    const double width = to - from;
    return width > 0 ? (value - from) / width : 0;
}

} // namespace

QPointF LineScale::map(QPointF point) const {
    const double height = std::clamp(share(point.y(), low, high), 0.0, 1.0);
    return {plot.left() + share(point.x(), from, to) * plot.width(), plot.bottom() - height * plot.height()};
}

double LineScale::timeAt(double x) const {
    return plot.width() > 0 ? from + (x - plot.left()) / plot.width() * (to - from) : from;
}

std::vector<int> drawablePoints(std::span<const QPointF> points) {
    std::vector<int> drawable;
    drawable.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        const QPointF point = points[i];
        if (!std::isfinite(point.x()) || !std::isfinite(point.y())) continue;
        if (!drawable.empty() && point.x() < points[static_cast<std::size_t>(drawable.back())].x()) continue;
        drawable.push_back(static_cast<int>(i));
    }
    return drawable;
}

std::vector<std::span<const int>> joinedRuns(std::span<const QPointF> points, std::span<const int> drawable,
                                             double gap, std::span<const int> starts) {
    std::vector<std::span<const int>> runs;
    std::size_t first = 0;
    const auto timeOf = [&](std::size_t i) { return points[static_cast<std::size_t>(drawable[i])].x(); };
    auto start = starts.begin();
    for (std::size_t i = 1; i <= drawable.size(); ++i) {
        // A start that is not drawable itself parts its neighbours all the same.
        while (start != starts.end() && *start <= drawable[i - 1])
            ++start;
        const bool begins = i < drawable.size() && start != starts.end() && *start <= drawable[i];
        if (i < drawable.size() && !begins && !(gap > 0 && timeOf(i) - timeOf(i - 1) > gap)) continue;
        runs.push_back(drawable.subspan(first, i - first));
        first = i;
    }
    return runs;
}

std::vector<QPointF> thinned(std::span<const QPointF> line, double column) {
    std::vector<QPointF> kept;
    const auto columnOf = [&](QPointF point) { return std::floor(point.x() / column); };
    for (std::size_t i = 0; i < line.size();) {
        std::size_t end = i + 1;
        while (end < line.size() && columnOf(line[end]) == columnOf(line[i]))
            ++end;
        const auto piece = line.subspan(i, end - i);
        const auto [low, high] =
            std::ranges::minmax_element(piece, {}, [](QPointF point) { return point.y(); });
        if (i == 0) kept.push_back(piece.front());
        const auto add = [&](QPointF point) {
            if (kept.empty() || kept.back() != point) kept.push_back(point);
        };
        add(*std::min(low, high));
        add(*std::max(low, high));
        if (end == line.size()) add(piece.back());
        i = end;
    }
    return kept;
}

int nearestPoint(std::span<const QPointF> points, std::span<const int> drawable, double time) {
    const auto timeOf = [&](int index) { return points[static_cast<std::size_t>(index)].x(); };
    const auto after = std::ranges::lower_bound(drawable, time, {}, timeOf);
    if (after == drawable.end()) return drawable.empty() ? -1 : drawable.back();
    if (after == drawable.begin()) return *after;
    const int before = *(after - 1);
    return time - timeOf(before) <= timeOf(*after) - time ? before : *after;
}

QRectF bubbleBox(QSizeF bubble, double ruleX, const QRectF& plot) {
    double left = ruleX + besideRule;
    if (left + bubble.width() > plot.right()) left = ruleX - besideRule - bubble.width();
    if (left < plot.left())
        left = std::max(plot.left(), std::min(ruleX + besideRule, plot.right() - bubble.width()));
    return {QPointF(left, plot.top() - abovePlot), bubble};
}

double labelLeft(int index, int count, double labelWidth, double width) {
    if (index >= count - 1) return width - labelWidth;
    if (index <= 0) return 0;
    return width * index / (count - 1) - labelWidth / 2;
}

} // namespace varnet
