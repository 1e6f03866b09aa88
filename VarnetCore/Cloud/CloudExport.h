#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Battery/BatteryArchive.h"
#include "VarnetCore/Cloud/CloudItem.h"
#include "VarnetCore/Hall/FlameArchive.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What leaves this machine, and back. No path, command line, working directory, project, finding or list of
/// processes does; applications go by a short name, and ids are digests.
namespace varnet::CloudExport {

/// The local history as items.
/// @param since battery points before it are left out; empty: none are
CloudResult<std::vector<CloudItem>> archive(const FlameArchive& collection, const BatteryArchive& battery,
                                            std::optional<Date> since, Date now);

/// What an executable or a bundle is called to others: its last component without what cannot be printed, at
/// most 120 characters; "Unknown process" when nothing is left.
std::string name(std::string_view path);

/// The way back, from what the service has sent: a JSON array of records with `kind`, `id`, `at` and `data`.
/// A record that cannot be understood is left out; what is not backed up has its default. Empty for what is
/// no array, and the collection also when none is among the records.
std::optional<FlameArchive> restoreCollection(std::string_view records);
std::optional<std::vector<FlameDay>> restoreDays(std::string_view records);
std::optional<BatteryArchive> restoreBattery(std::string_view records);

/// What was restored, with what only the local collection has. Days are those of one zone: where the two
/// keep different ones, the restored days stand alone.
FlameArchive merged(FlameArchive restored, const FlameArchive& local);

} // namespace varnet::CloudExport
