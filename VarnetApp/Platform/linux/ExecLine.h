#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace varnet::platform {

/// What the command line of a .desktop file starts.
struct ExecLine {
    std::string program;       ///< absolute path, or a name to be looked up in PATH
    std::size_t arguments = 0; ///< arguments of its own, place-holders for files and the like not counted
};

/// Unquotes a command line, drops its place-holders and looks through `env` with its settings.
/// @return empty when it names no program or a quote stays open
std::optional<ExecLine> parseExecLine(std::string_view exec);

/// Whether a program runs other programs, so that its name says nothing about what it is running: shells,
/// interpreters, runtimes, sandboxes and launchers, with or without a version behind the name.
/// @param name last piece of a path
bool runsOtherPrograms(std::string_view name);

} // namespace varnet::platform
