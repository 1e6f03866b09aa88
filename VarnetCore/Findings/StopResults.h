#pragma once

#include "VarnetCore/Findings/StopPlan.h"

#include <span>
#include <vector>

namespace varnet {

/// What is known after another attempt at some of the targets: the later result of a process wins.
/// @param targets of the whole plan; their order is that of the answer
std::vector<StopResult> merged(std::span<const StopResult> previous, std::span<const StopResult> later,
                               std::span<const StopTarget> targets);

/// The targets that another attempt may touch: those seen to be still running, in the plan's order.
std::vector<StopTarget> survivors(std::span<const StopTarget> targets, std::span<const StopResult> results);

bool hasSurvivors(std::span<const StopResult> results) noexcept;

/// Whether every process is known to be gone.
bool allExited(std::span<const StopResult> results) noexcept;

} // namespace varnet
