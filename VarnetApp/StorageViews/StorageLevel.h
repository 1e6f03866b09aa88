#pragma once

#include "VarnetApp/StorageMap/TreemapModel.h"
#include "VarnetCore/Storage/StorageFamily.h"

#include <QString>

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace varnet {

/// Which part of the projects the map shows: all families, the small ones among them, one family's projects,
/// or one project's buckets.
struct StorageLevel {
    enum class Kind { all, small, family, project };

    Kind kind = Kind::all;
    bool amongSmall = false; ///< a family or project was opened from among the small ones
    std::string familyID = {};
    std::string projectPath = {};

    friend bool operator==(const StorageLevel&, const StorageLevel&) = default;
};

/// A step of the way to a level.
struct StorageCrumb {
    StorageLevel level;
    QString title;
    bool ours = false; ///< the title is a text of ours and no name
};

namespace StorageLevels {

/// The level itself, or the nearest one above it that is still there.
StorageLevel present(const StorageLevel& level, std::span<const StorageFamily> families);
std::vector<TreemapTile> tiles(const StorageLevel& level, std::span<const StorageFamily> families,
                               bool scanning);
/// Where a tile leads; the same level when it leads nowhere. A family of one project leads right into it.
StorageLevel below(const StorageLevel& level, const std::string& tileID,
                   std::span<const StorageFamily> families);
/// From all families to the level, each step's end included.
std::vector<StorageCrumb> trail(const StorageLevel& level, std::span<const StorageFamily> families);

/// Null when it is not there.
const StorageFamily* familyOf(std::span<const StorageFamily> families, const std::string& id);
const StorageProject* projectOf(std::span<const StorageFamily> families, const std::string& path);

} // namespace StorageLevels
} // namespace varnet
