#pragma once

#include "VarnetCore/Findings/StopPlan.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"
#include "VarnetCore/Monitoring/ProcessSample.h"
#include "VarnetCore/Monitoring/Service.h"

#include <cstdint>
#include <expected>

namespace varnet {
class PlanningTable;
}

/// Writes down exactly what a stop would stop, before anything is stopped. Pure rules.
/// In all of them `uid` is the user this program runs as and `selfPID` this program's pid; -1 matches none.
namespace varnet::StopPlanner {

/// Levels of processes below the root that a plan takes in, at most.
constexpr int deepestLevel = 40;

/// Whether a process must never be stopped: another user's process, a system process, pid 0 or 1, this
/// program, an application's main process, anything inside an application bundle except Python's, an AI
/// agent.
bool isProtected(const ProcessSample& process, std::uint32_t uid, std::int32_t selfPID);

/// Whether a process may be offered for stopping at all: not protected, and recognisably development work,
/// at work in a project, or credited to an agent that was observed.
bool canStopProcess(const ProcessSample& process, std::uint32_t uid, std::int32_t selfPID);

/// A plan for a process and what it has started. Left out, each with all below it: what is protected, what
/// works in another project, and what only bears the pid of a parent that is gone.
/// @param process names the process by its identity; what the snapshot says of it is what counts
std::expected<StopPlan, StopPlanningError> make(const ProcessSample& process, const MonitorSnapshot& snapshot,
                                                std::uint32_t uid, std::int32_t selfPID);

/// A plan for a server; unavailable when it listens on no port.
std::expected<StopPlan, StopPlanningError> make(const Service& service, const MonitorSnapshot& snapshot,
                                                std::uint32_t uid, std::int32_t selfPID);

/// The same two for who plans many items on one snapshot.
std::expected<StopPlan, StopPlanningError> make(const ProcessIdentity& process, const PlanningTable& table,
                                                std::uint32_t uid, std::int32_t selfPID);
std::expected<StopPlan, StopPlanningError> make(const Service& service, const PlanningTable& table,
                                                std::uint32_t uid, std::int32_t selfPID);

} // namespace varnet::StopPlanner
