#include "VarnetCore/Disk/StorageTreemap.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace varnet {

namespace {

struct Item {
    std::size_t index = 0;
    double area = 0;
};

/// A row of items along one side, by what its shape depends on.
struct Row {
    double sum = 0;
    double largest = 0;
    double smallest = std::numeric_limits<double>::infinity();

    void add(double area) {
        sum += area;
        largest = std::max(largest, area);
        smallest = std::min(smallest, area);
    }

    /// The worst ratio of sides in it; 1 is a square.
    double worst(double side) const {
        if (!(sum > 0 && side > 0 && smallest > 0) || std::isinf(smallest))
            return std::numeric_limits<double>::infinity();
        return std::max(side * side * largest / (sum * sum), sum * sum / (side * side * smallest));
    }
};

class Layout {
public:
    Layout(const MapRectangle& area, std::vector<MapRectangle>& result) : remaining_(area), result_(result) {}

    void run(std::span<const Item> items) {
        std::size_t begin = 0;
        Row row;
        for (std::size_t at = 0; at < items.size(); ++at) {
            Row longer = row;
            longer.add(items[at].area);
            const double side = std::min(remaining_.width, remaining_.height);
            if (at > begin && longer.worst(side) > row.worst(side)) {
                place(items.subspan(begin, at - begin), row.sum);
                begin = at;
                row = {};
                row.add(items[at].area);
            } else {
                row = longer;
            }
        }
        if (begin < items.size()) place(items.subspan(begin), row.sum);
    }

private:
    /// Along the shorter side: a column at the left, or a band at the top where the rest is taller than wide.
    void place(std::span<const Item> row, double sum) {
        const bool column = !(remaining_.height > remaining_.width);
        double& extent = column ? remaining_.width : remaining_.height;
        const double side = column ? remaining_.height : remaining_.width;
        const double begin = column ? remaining_.y : remaining_.x;
        const double thickness = std::min(sum / side, extent);
        double at = begin;
        for (const Item& item : row) {
            const double left = std::max(begin + side - at, 0.0);
            // The last one takes what is left: rounding leaves no gap.
            double length = &item == &row.back() ? left : std::min(item.area / thickness, left);
            if (!(length > 0)) length = 0;
            MapRectangle& place = result_[item.index];
            place = column ? MapRectangle{remaining_.x, at, thickness, length}
                           : MapRectangle{at, remaining_.y, length, thickness};
            if (!(place.width > 0 && place.height > 0)) place = {place.x, place.y, 0, 0};
            at += length;
        }
        (column ? remaining_.x : remaining_.y) += thickness;
        extent = std::max(extent - thickness, 0.0);
    }

    MapRectangle remaining_;
    std::vector<MapRectangle>& result_;
};

} // namespace

std::vector<MapRectangle> StorageTreemap::rectangles(std::span<const double> weights,
                                                     const MapRectangle& area) {
    std::vector<MapRectangle> result(weights.size());
    if (!(area.width > 0 && area.height > 0) || !std::isfinite(area.width) || !std::isfinite(area.height))
        return result;
    std::vector<Item> items;
    double total = 0;
    for (std::size_t index = 0; index < weights.size(); ++index)
        if (weights[index] > 0 && std::isfinite(weights[index])) items.push_back({index, weights[index]});
    std::ranges::stable_sort(items, std::ranges::greater{}, &Item::area);
    for (const Item& item : items)
        total += item.area;
    if (items.empty() || !(total > 0) || !std::isfinite(total)) return result;
    for (Item& item : items)
        item.area = item.area / total * area.width * area.height;
    Layout(area, result).run(items);
    return result;
}

} // namespace varnet
