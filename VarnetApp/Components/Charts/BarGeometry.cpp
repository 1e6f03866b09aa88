#include "VarnetApp/Components/Charts/BarGeometry.h"

#include <algorithm>
#include <cmath>

namespace varnet {

namespace {

constexpr int segmentGap = 2;
constexpr int sliver = 4;

} // namespace

double barLength(double width, double height, double value) {
    if (!(value > 0) || width <= 0) return 0;
    return std::min(width, std::max(height, width * std::min(value, 1.0)));
}

std::vector<BarSegment> stackedSegments(std::span<const double> shares, int width) {
    std::vector<BarSegment> segments;
    double sum = 0;
    int edge = 0;
    for (std::size_t i = 0; i < shares.size() && edge < width; ++i) {
        if (!(shares[i] > 0)) continue;
        sum = std::min(1.0, sum + shares[i]);
        // The gap is taken from the segment, so that the ends stay where their sums are.
        const int end = std::min(width, static_cast<int>(std::lround(sum * width)));
        const int length =
            std::min(std::max(end - edge - (end < width ? segmentGap : 0), sliver), width - edge);
        segments.push_back({static_cast<int>(i), edge, length});
        edge += length + segmentGap;
    }
    return segments;
}

} // namespace varnet
