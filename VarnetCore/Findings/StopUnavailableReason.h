#pragma once

#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/ProcessSample.h"
#include "VarnetCore/Monitoring/Service.h"

#include <cstdint>
#include <span>
#include <string>

namespace varnet {

/// One sentence for the user on why a process is not offered for stopping. Says nothing of whether it is.
/// @param uid the user this program runs as
/// @param selfPID this program's pid
std::string stopUnavailableReason(const ProcessSample& process, std::uint32_t uid, std::int32_t selfPID);

/// The same for a group.
/// @param services those that the user sees
std::string stopUnavailableReason(const ApplicationGroup& group, std::span<const Service> services,
                                  std::uint32_t uid, std::int32_t selfPID);

} // namespace varnet
