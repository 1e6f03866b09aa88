#pragma once

#include "VarnetCore/Disk/DiskCapacity.h"
#include "VarnetCore/Disk/DiskUsageScan.h"

#include <filesystem>
#include <optional>
#include <string>

/// A developer's disk, made up: what pictures of the whole disk show.
namespace varnet::PreparedDisk {

/// Whose home folder it is.
inline constexpr const char* home = "/home/dana";

DiskCapacity capacity();
/// The home folder: 28 items, one of them measured in part, and three empty ones.
DiskUsageScan homeFolder();
/// What lies right below the roots.
DiskUsageScan top();
/// A scan that has just begun to find something.
DiskUsageScan beginning();
/// As many rows as a folder ever has, and one for the rest.
DiskUsageScan crowded();
/// Names that are no text, break lines, or are very long.
DiskUsageScan oddNames();

/// Fills a folder with a small tree of real files, about two megabytes, and measures it as the program does.
/// @param folder is there and empty
/// @return what is in it; empty when it could not be written or measured
std::optional<DiskUsageScan> measuredTree(const std::filesystem::path& folder);

} // namespace varnet::PreparedDisk
