#pragma once

#include "VarnetCore/Findings/StopPlan.h"
#include "VarnetCore/Monitoring/ApplicationGroup.h"
#include "VarnetCore/Monitoring/Service.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace varnet {

/// What ticking a group asks for: its application, its one process, or the servers of its project. Empty when
/// there is nothing in it that may be stopped.
/// @param services those that the user sees
/// @param uid the user this program runs as
/// @param selfPID this program's pid
std::vector<BatchStopRequest> batchRequests(const ApplicationGroup& group, std::span<const Service> services,
                                            std::uint32_t uid, std::int32_t selfPID);

/// The same for a server: its root, if that may be stopped.
std::vector<BatchStopRequest> batchRequests(const Service& service, std::uint32_t uid, std::int32_t selfPID);

/// By the id of the group; groups that ask for nothing are left out.
std::map<std::string, std::vector<BatchStopRequest>> batchCandidates(std::span<const ApplicationGroup> groups,
                                                                     std::span<const Service> services,
                                                                     std::uint32_t uid, std::int32_t selfPID);

} // namespace varnet
