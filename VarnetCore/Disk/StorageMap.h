#pragma once

#include "VarnetCore/Disk/DiskMapNode.h"

#include <optional>
#include <string_view>
#include <vector>

namespace varnet {

/// The tiles of one level of a map, made few enough to be read.
struct StorageMap {
    /// Share of the whole below which a tile is not shown by itself.
    static constexpr double threshold = 0.035;
    /// Tiles shown by themselves at most.
    static constexpr std::size_t mostPrimary = 4;
    /// The tile that stands for the small ones.
    static constexpr std::string_view smallID = "small-folders";

    std::vector<DiskMapNode> sorted;      ///< largest first; those of one size by id
    std::vector<DiskMapNode> primary;     ///< shown by themselves
    std::vector<DiskMapNode> small;       ///< the others
    std::optional<DiskMapNode> smallNode; ///< stands for them; empty when there are none

    /// What is shown: `primary`, and then `smallNode`.
    std::vector<DiskMapNode> displayed() const;

    /// @param familyOpen everything is shown by itself
    static StorageMap group(std::vector<DiskMapNode> nodes, bool familyOpen);
};

} // namespace varnet
