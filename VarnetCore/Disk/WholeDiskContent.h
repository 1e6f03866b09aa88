#pragma once

#include "VarnetCore/Disk/DiskMapNode.h"
#include "VarnetCore/Disk/DiskUsageScan.h"

#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// What the map of a folder shows of what the index says.
namespace WholeDiskContent {

/// Tiles that show an entry each.
constexpr std::size_t mostTiles = 5;
/// The tile that stands for the rest.
constexpr std::string_view moreID = "__more__";

/// Entries whose name contains a text, whatever the case; all without a text.
std::vector<DiskUsageEntry> filtered(const std::vector<DiskUsageEntry>& entries, std::string_view search);

/// The tiles.
/// @param entries largest first
std::vector<DiskMapNode> nodes(const std::vector<DiskUsageEntry>& entries);

/// A row as a tile would be.
DiskMapNode node(const DiskUsageEntry& entry);

/// Whether a path is one of the folders in which agents and workspace managers keep their worktrees, or
/// below.
bool isProject(std::string_view path);

/// Whether an entry stands for others and cannot be opened or shown.
bool isGrouped(std::string_view path) noexcept;

} // namespace WholeDiskContent
} // namespace varnet
