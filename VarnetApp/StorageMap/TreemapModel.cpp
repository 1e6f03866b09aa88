#include "VarnetApp/StorageMap/TreemapModel.h"

#include <unordered_set>
#include <utility>

namespace varnet {

void TreemapModel::update(std::vector<TreemapTile> tiles) {
    std::unordered_set<std::string_view> seen;
    seen.reserve(tiles.size());
    bool twice = false;
    for (const TreemapTile& tile : tiles)
        twice = !seen.insert(tile.node.id).second || twice;
    if (twice) {
        std::unordered_set<std::string> keys;
        std::erase_if(tiles, [&](const TreemapTile& tile) { return !keys.insert(tile.node.id).second; });
    }
    if (tiles == tiles_) return;
    tiles_ = std::move(tiles);
    emit changed();
}

} // namespace varnet
