#pragma once

namespace varnet::BatteryDiagnostics {

/// Measures until energy scores are there, on a storage of its own, and prints the battery's reading and what
/// is kept of it as one JSON object; "none" stands for what is not known. Without a battery it says so.
/// @return 0 on any machine
int run();

} // namespace varnet::BatteryDiagnostics
