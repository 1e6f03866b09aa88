#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>

namespace varnet::probes {

/// Runs a body as the first process of a pid namespace of its own, with a /proc of its own: there a pid can
/// be had at will, and reused at once.
/// @param body returns what went wrong, nothing when all was well
/// @return the same; empty when this machine does not allow such a namespace
std::optional<std::string> runInPidNamespace(const std::function<std::string()>& body);

/// Inside such a namespace: forks a process with this pid, which must be free, that calls the body and then
/// sleeps. @return whether it was had
bool forkWithPid(pid_t pid, const std::function<void()>& body);

} // namespace varnet::probes
