#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/CPUWindow.h"
#include "VarnetCore/Monitoring/ProcessIdentity.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <unordered_set>

namespace varnet {

/// A comparable score for the energy that a process uses. It has no unit: one core fully used scores 100,
/// and one wake-up counts as 500 microseconds of CPU time.
struct EnergyImpact {
    std::optional<double> current; ///< since the reading before
    std::optional<double> average; ///< over 30 seconds

    friend bool operator==(const EnergyImpact&, const EnergyImpact&) = default;
};

/// Turns successive counter readings of processes into energy scores. Plain logic for one thread.
class EnergyImpactSampler {
public:
    /// @param cpu cumulative CPU time, nanoseconds
    /// @param wakeups cumulative wake-ups
    /// @return nothing on the first reading, after a gap of more than 15 seconds, or when a counter went
    ///         backwards; the average then starts afresh
    EnergyImpact sample(const ProcessIdentity& id, std::uint64_t cpu, std::uint64_t wakeups, Date at);

    /// Forgets every process that is not in the set.
    void retain(const std::unordered_set<ProcessIdentity>& ids);
    void reset() noexcept { previous_.clear(); }

    /// Processes remembered.
    std::size_t entries() const noexcept { return previous_.size(); }

private:
    struct Previous {
        std::uint64_t cpu = 0;
        std::uint64_t wakeups = 0;
        Date date;
        CPUWindow window;
    };
    std::unordered_map<ProcessIdentity, Previous> previous_;
};

} // namespace varnet
