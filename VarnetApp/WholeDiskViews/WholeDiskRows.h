#pragma once

#include "VarnetApp/StorageMap/TreemapCells.h"
#include "VarnetCore/Disk/DiskUsageScan.h"

#include <QByteArray>
#include <QVariant>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// Something in the folder that is shown.
struct DiskRow {
    std::string key; ///< its path
    DiskUsageEntry entry;
    double share = 0;                          ///< of the largest one's bytes, 0 to 1
    const TreemapLanguage* language = nullptr; ///< outlives the row

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const DiskRow&, const DiskRow&) = default;
};

/// A step of the way to the folder that is shown.
struct DiskCrumb {
    /// Stands for the top in a crumb's key.
    static constexpr const char* top = "__top__";

    std::string key; ///< the path that it leads to, or `top`
    std::string name;
    bool isTop = false;
    bool current = false;
    bool collapsed = false; ///< stands for several steps and leads to the last of them

    QVariant value(int role) const;
    static std::vector<QByteArray> roles();
    friend bool operator==(const DiskCrumb&, const DiskCrumb&) = default;
};

/// The way to a folder.
/// @param path empty: the top
/// @param most crumbs that find room; the middle of a longer way is one crumb. At least 3
std::vector<DiskCrumb> diskCrumbs(const std::optional<std::string>& path, const std::string& diskName,
                                  std::size_t most);

/// The folder that a folder is in; empty: the top.
std::optional<std::string> folderAbove(const std::string& path);

} // namespace varnet
