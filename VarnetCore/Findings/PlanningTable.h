#pragma once

#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace varnet {

/// A snapshot's processes as stop planning looks them up. Making one reads the whole snapshot; who plans for
/// many items makes it once. The snapshot must outlive it.
class PlanningTable {
public:
    explicit PlanningTable(const MonitorSnapshot& snapshot);

    /// The snapshot did not measure normally: nothing may be planned on it.
    bool failed() const noexcept { return failed_; }
    /// Null when no process has this very identity, even if one has its pid.
    const SampleRef* find(const ProcessIdentity& identity) const;
    /// The processes that name a pid as their parent, in the snapshot's order.
    std::span<const SampleRef* const> children(std::int32_t pid) const;

private:
    bool failed_;
    std::unordered_map<ProcessIdentity, const SampleRef*> byIdentity_;
    std::vector<const SampleRef*> byParent_; ///< by parent's pid, then the snapshot's order
};

} // namespace varnet
