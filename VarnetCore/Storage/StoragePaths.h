#pragma once

#include "VarnetCore/Storage/StorageBucket.h"
#include "VarnetCore/Storage/StorageLocation.h"

#include <string>
#include <string_view>
#include <vector>

/// Paths as project storage reads them.
namespace varnet::StoragePaths {

/// Where agents and workspace managers keep their worktrees.
/// @param home the user's home directory
std::vector<StorageLocation> defaults(std::string_view home);

/// Without symbolic links; where nothing can be found on disk, merely tidied as a text.
std::string canonical(const std::string& path);

/// Whether a path is the root or below it. A mere common beginning is not enough.
bool contains(std::string_view path, std::string_view root) noexcept;

/// What a part of a project is for.
/// @param relativePath as seen from the project
StorageBucket bucket(std::string_view relativePath) noexcept;

} // namespace varnet::StoragePaths
