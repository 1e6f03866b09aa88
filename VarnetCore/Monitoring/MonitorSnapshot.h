#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Findings/Finding.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/ProcessSample.h"
#include "VarnetCore/Monitoring/Service.h"
#include "VarnetCore/Monitoring/SystemMemorySnapshot.h"
#include "VarnetCore/Sensors/FanSnapshot.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// The machine's thermal pressure, rising.
enum class Thermal { nominal, fair, serious, critical };

/// "nominal", "fair", "serious" or "critical".
std::string_view rawValue(Thermal thermal) noexcept;

/// A point of the machine's CPU history.
struct CPUPoint {
    Date date;
    double value = 0; ///< percent of the whole machine, 0 to 100

    Date id() const noexcept { return date; }
    friend bool operator==(const CPUPoint&, const CPUPoint&) = default;
};

struct BatteryDashboard;

/// All that one pass knows. Immutable once published; crosses threads as a shared pointer to const.
struct MonitorSnapshot {
    Date date;
    std::vector<SampleRef> processes;
    std::vector<ApplicationGroup> groups;
    std::vector<Service> services;
    std::vector<Finding> findings;
    FanSnapshot fans;
    Thermal thermal = Thermal::nominal;
    std::optional<double> systemCPU;  ///< percent of the whole machine
    std::uint64_t physicalMemory = 0; ///< bytes of RAM
    SystemMemorySnapshot systemMemory;
    std::vector<CPUPoint> history;                   ///< the last 15 minutes, oldest first
    int logicalCores = 1;                            ///< active processors
    std::shared_ptr<const BatteryDashboard> battery; ///< null before the first reading
    std::optional<std::string> error;                ///< empty when the pass measured normally

    /// Turns percent of one core into percent of the whole machine, 0 to 100; unknown stays unknown.
    std::optional<double> normalized(std::optional<double> value) const noexcept;
    /// Bytes over all processes, by the rule of group sums.
    std::optional<std::uint64_t> processMemory() const noexcept;
    /// Processes that count as development work.
    std::size_t developmentCount() const;
    /// Living agents that some process is credited to.
    std::size_t agentCount() const;
};

} // namespace varnet
