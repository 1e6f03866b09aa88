#include "VarnetCore/Disk/StorageMap.h"

#include <algorithm>
#include <limits>

namespace varnet {

namespace {

std::uint64_t sumOf(const std::vector<DiskMapNode>& nodes) {
    std::uint64_t sum = 0;
    for (const DiskMapNode& node : nodes)
        if (__builtin_add_overflow(sum, node.bytes, &sum)) return std::numeric_limits<std::uint64_t>::max();
    return sum;
}

} // namespace

std::vector<DiskMapNode> StorageMap::displayed() const {
    std::vector<DiskMapNode> result = primary;
    if (smallNode) result.push_back(*smallNode);
    return result;
}

StorageMap StorageMap::group(std::vector<DiskMapNode> nodes, bool familyOpen) {
    StorageMap map;
    std::ranges::sort(nodes, [](const DiskMapNode& a, const DiskMapNode& b) {
        return a.bytes != b.bytes ? a.bytes > b.bytes : a.id < b.id;
    });
    map.sorted = std::move(nodes);
    std::size_t count = map.sorted.size();
    if (!familyOpen) {
        const double least = threshold * static_cast<double>(sumOf(map.sorted));
        const auto large = std::ranges::find_if(
            map.sorted, [&](const DiskMapNode& node) { return static_cast<double>(node.bytes) < least; });
        count = std::min(static_cast<std::size_t>(large - map.sorted.begin()), mostPrimary);
    }
    const auto middle = map.sorted.begin() + static_cast<std::ptrdiff_t>(count);
    map.primary.assign(map.sorted.begin(), middle);
    map.small.assign(middle, map.sorted.end());
    if (map.small.empty()) return map;
    DiskMapNode rest;
    rest.id = smallID;
    rest.title = std::to_string(map.small.size()) + " more item" + (map.small.size() > 1 ? "s" : "");
    rest.subtitle = "See all smaller items";
    rest.bytes = sumOf(map.small);
    rest.partial = std::ranges::any_of(map.small, &DiskMapNode::partial);
    rest.symbol = "square.stack.3d.up.fill";
    rest.localizeTitle = true;
    map.smallNode = std::move(rest);
    return map;
}

} // namespace varnet
