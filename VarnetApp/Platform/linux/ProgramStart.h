#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varnet::platform {

/// @param folders in which to look, the most important first
/// @return absolute path of the first that may be run; empty when there is none
std::string findProgram(std::string_view name, std::span<const std::string> folders);

/// Starts a program that goes on by itself, in a session of its own, and sees to it that its end leaves
/// nothing behind. Does not wait for it.
/// @return whether it has started
bool startProgram(const std::string& path, std::vector<std::string> arguments);

} // namespace varnet::platform
