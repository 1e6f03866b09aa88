#pragma once

#include <span>
#include <vector>

namespace varnet {

/// An area of a picture, in any unit; y grows downwards.
struct MapRectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    friend bool operator==(const MapRectangle&, const MapRectangle&) = default;
};

/// Lays weights out as rectangles that are as square as they can be, the largest at the top left.
namespace StorageTreemap {

/// @param weights one that is not above zero or not finite gets an empty rectangle
/// @return one rectangle a weight, at its place; together they fill the area without overlap
std::vector<MapRectangle> rectangles(std::span<const double> weights, const MapRectangle& area);

} // namespace StorageTreemap
} // namespace varnet
