#pragma once

#include <cstdint>
#include <string>

namespace varnet::platform {

/// Text of a process's `cgroup` file; empty when the process has gone or it cannot be read.
/// @param root where the kernel's process folders are mounted
std::string readControlGroupFile(std::int32_t pid, const std::string& root = "/proc");

} // namespace varnet::platform
