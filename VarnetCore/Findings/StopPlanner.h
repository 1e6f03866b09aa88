#pragma once

#include "VarnetCore/Monitoring/ProcessSample.h"

#include <cstdint>

/// Writes down exactly what a stop would stop, before anything is stopped. Pure rules.
namespace varnet::StopPlanner {

/// Whether a process must never be stopped: another user's process, a system process, pid 0 or 1, this
/// program, an application's main process, anything inside an application bundle except Python's, an AI
/// agent.
/// @param uid the user this program runs as
/// @param selfPID this program's pid; -1 matches none
bool isProtected(const ProcessSample& process, std::uint32_t uid, std::int32_t selfPID);

/// Whether a process may be offered for stopping at all: not protected, and recognisably development work,
/// at work in a project, or credited to an agent that was observed.
/// @param uid the user this program runs as
/// @param selfPID this program's pid; -1 matches none
bool canStopProcess(const ProcessSample& process, std::uint32_t uid, std::int32_t selfPID);

} // namespace varnet::StopPlanner
