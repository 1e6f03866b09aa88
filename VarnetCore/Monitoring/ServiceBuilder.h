#pragma once

#include "VarnetCore/Monitoring/ProcessChains.h"
#include "VarnetCore/Monitoring/Service.h"

#include <cstdint>
#include <span>
#include <vector>

namespace varnet {

/// Finds the running servers of one pass: for each project's tree of listening processes the topmost one,
/// with the workers below it.
/// @param processes in the order that `chains` was built over
/// @param development by position: whether the process counts as development work
/// @return by id, as text
std::vector<Service> makeServices(std::span<const SampleRef> processes, const ProcessChains& chains,
                                  const std::vector<bool>& development, std::uint32_t currentUID);

} // namespace varnet
