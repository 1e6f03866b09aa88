#pragma once

#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <optional>

namespace varnet {

/// What keeps the machine busy, by the kind of work: percent of the whole machine over 30 seconds. Empty: no
/// group of that kind has a reading; nobody there at all is nought.
struct CPUShares {
    std::optional<double> apps;  ///< applications
    std::optional<double> dev;   ///< projects
    std::optional<double> other; ///< system and unassigned processes

    friend bool operator==(const CPUShares&, const CPUShares&) = default;
};

CPUShares cpuShares(const MonitorSnapshot& snapshot);

/// Whether the snapshot can be judged: it has processes, measured them, and knows the machine's CPU.
bool measurementsReady(const MonitorSnapshot& snapshot) noexcept;

} // namespace varnet
