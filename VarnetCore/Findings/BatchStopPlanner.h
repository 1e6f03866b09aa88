#pragma once

#include "VarnetCore/Findings/StopPlan.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <cstdint>
#include <expected>
#include <span>

/// Writes down what stopping a selection would quit and stop. Pure rules.
namespace varnet::BatchStopPlanner {

/// All or nothing: the first request that fails fails the batch, so that no part of a stale review is acted
/// on. Repeated requests count once.
/// @param uid the user this program runs as
/// @param selfPID this program's pid; -1 matches none
std::expected<BatchStopPlan, StopPlanningError> make(std::span<const BatchStopRequest> requests,
                                                     const MonitorSnapshot& snapshot, std::uint32_t uid,
                                                     std::int32_t selfPID);

} // namespace varnet::BatchStopPlanner
