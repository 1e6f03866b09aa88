#pragma once

#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

/// A snapshot as text, for the diagnostic switches.
namespace varnet::SnapshotReport {

/// Everything, as a JSON object. Unknown values are null, never 0; processes are named by identity texts.
nlohmann::ordered_json json(const MonitorSnapshot& snapshot);

/// The same as text; bytes that are no UTF-8 are replaced.
std::string text(const nlohmann::ordered_json& report);

/// A page for people: the machine, its busiest groups, its servers.
std::string page(const MonitorSnapshot& snapshot);

} // namespace varnet::SnapshotReport
