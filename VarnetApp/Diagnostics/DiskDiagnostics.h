#pragma once

#include <string>
#include <vector>

namespace varnet::DiskDiagnostics {

/// Scans the whole startup disk, or a folder, into an index, and prints what it found and what that cost as
/// one JSON object. The index goes with the run.
/// @param folders none, or one
/// @return exit status: 0 when the scan is complete
int run(const std::vector<std::string>& folders);

} // namespace varnet::DiskDiagnostics
