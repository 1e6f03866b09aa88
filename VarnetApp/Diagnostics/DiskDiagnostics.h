#pragma once

#include <optional>
#include <string>

namespace varnet::DiskDiagnostics {

/// Scans the whole startup disk, or a folder, into an index, and prints what it found and what that cost as
/// one JSON object. The index goes with the run.
/// @return exit status: 0 when the scan is complete
int run(const std::optional<std::string>& folder);

} // namespace varnet::DiskDiagnostics
