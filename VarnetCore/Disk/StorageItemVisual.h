#pragma once

#include "VarnetCore/Disk/DiskMapNode.h"
#include "VarnetCore/Disk/DiskUsageScan.h"

#include <string>

namespace varnet {

/// How a thing on disk looks: familiar names have icons and colours of their own, in several languages.
struct StorageItemVisual {
    std::string symbol;
    MapTone color = MapTone::gray;

    /// @param project it belongs to a worktree of an agent or a workspace manager
    static StorageItemVisual resolve(const DiskUsageEntry& entry, bool project);

    friend bool operator==(const StorageItemVisual&, const StorageItemVisual&) = default;
};

} // namespace varnet
