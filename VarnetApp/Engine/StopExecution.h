#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Findings/StopPlan.h"
#include "VarnetCore/Monitoring/SessionArchive.h"
#include "probes/Probes.h"

#include <cstdint>
#include <map>
#include <vector>

namespace varnet {

/// One reviewed plan being carried out: signals sent once at the start, then watched until every process is
/// seen to be gone or time is up. A step machine: somebody else waits between two looks.
class StopExecution {
public:
    /// Seconds between two looks.
    static constexpr double pause = 0.25;
    /// Seconds to wait for confirmed exits.
    static constexpr double politePatience = 10;
    static constexpr double forcedPatience = 3;

    /// @param boot the boot time that identities of this run carry
    StopExecution(StopPlan plan, StopForce force, std::uint64_t boot) noexcept;

    /// Signals every target whose identity still matches, newest first, so that children go before their
    /// parents.
    void signal(Probes& probes);
    /// Starts the time that is waited.
    void startWaiting(Date now) noexcept;
    /// Looks at every target that is still open. @return whether there is nothing left to wait for
    bool look(Probes& probes, Date now);

    /// One per target, in the plan's order; what is still open is still running.
    std::vector<StopResult> results() const;
    /// What the history says of it.
    HistoryRecord record(Date now) const;

private:
    void close(const StopTarget& target, StopOutcome outcome, std::string detail = {});
    bool isOpen(const StopTarget& target) const { return !closed_.contains(target.identity); }

    const StopPlan plan_;
    const StopForce force_;
    const std::uint64_t boot_;
    Date deadline_;
    std::map<ProcessIdentity, StopResult> closed_;
};

} // namespace varnet
