#pragma once

#include <string>
#include <vector>

namespace varnet::StorageDiagnostics {

/// Scans the places where agents keep their worktrees, and the given folders, for project folders and what
/// they occupy; prints it as one JSON object. Changes nothing.
/// @param folders searched besides, with the source "Local folder"
/// @return 0
int run(const std::vector<std::string>& folders);

} // namespace varnet::StorageDiagnostics
