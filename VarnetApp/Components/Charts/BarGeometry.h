#pragma once

#include <span>
#include <vector>

namespace varnet {

/// The length of a bar with round ends: never shorter than it is high once there is anything to show.
/// @param value a share, cut to 1; nothing when it is 0, negative or not a number
double barLength(double width, double height, double value);

struct BarSegment {
    int index; ///< of the value it shows
    int x;
    int width;
};

/// Lays shares of one whole side by side in whole pixels with a gap after each. A share above zero keeps at
/// least a sliver; shares that are not above zero have no segment; what does not fit in the width is cut.
/// @param shares parts of 1
std::vector<BarSegment> stackedSegments(std::span<const double> shares, int width);

} // namespace varnet
