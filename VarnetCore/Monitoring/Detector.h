#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// Decides from a process's strings alone what it is. Pure; text is compared lowercased (ASCII) except for
/// path fragments such as ".app/".
namespace varnet::Detector {

/// Display name of the AI coding agent that a process is, if it is one. Every rule that asks "is this an
/// agent" asks here.
/// @param executable full path; when empty `name` stands in for it
/// @param bundleID identifier of the application whose main process this is; empty: none
std::optional<std::string> agent(std::string_view name, std::string_view executable,
                                 std::span<const std::string> arguments, std::string_view bundleID);

/// As agent, without a copy: the names live as long as the program. Empty: none.
std::string_view agentName(std::string_view name, std::string_view executable,
                           std::span<const std::string> arguments, std::string_view bundleID) noexcept;

/// Whether a process counts as development work: a runtime, a tool, an agent or a server framework.
bool isDevelopment(std::string_view executable, std::string_view name,
                   std::span<const std::string> arguments) noexcept;

/// Display name of the server framework that a process runs, if one is recognised.
std::optional<std::string> framework(std::span<const std::string> arguments, std::string_view name);

/// Path of the outermost application bundle (".app") that a path lies in.
std::optional<std::string> applicationPath(std::string_view executable);

/// Whether a directory is an agent's own installed plugin, which is not the user's project.
/// @param path empty: no
bool isInstalledPluginDirectory(std::string_view path);

/// Last non-empty piece of a path, lowercased; the whole text when there is none.
std::string basename(std::string_view path);

} // namespace varnet::Detector
