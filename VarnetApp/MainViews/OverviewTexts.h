#pragma once

#include "VarnetApp/Localization/Figures.h"
#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// The overview's lines that are made of readings: whole English sentences.
namespace varnet::OverviewTexts {

/// When what the snapshot shows was measured. A pass that failed shows what an earlier one measured; empty:
/// nothing was measured yet.
std::optional<Date> measuredAt(const MonitorSnapshot& snapshot);
/// "Updated 2s ago", in minutes and hours from a minute on; "Updated —" without a measurement.
QString updated(std::optional<Date> measured, Date now);
/// "Thermal: nominal".
QString thermal(Thermal thermal);
/// "17.9 of 32 GB RAM"; empty when it is not known.
QString memory(std::optional<std::uint64_t> used, std::uint64_t physical, const Figures& figures);
/// "3 recognized tools".
QString tools(std::size_t count);
/// The time of day, here: "14:28:06".
QString timeOfDay(Date date);
/// What the chart of the last minutes shows, for those who do not see it.
QString timeline(std::span<const CPUPoint> history, const Figures& figures);

} // namespace varnet::OverviewTexts
