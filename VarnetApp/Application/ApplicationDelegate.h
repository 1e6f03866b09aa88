#pragma once

#include <filesystem>

namespace varnet {

struct CommandLine;

namespace ApplicationDelegate {

/// Runs the program: tray, windows, sampling, until the user quits it. A second start asks the first for its
/// window and ends. @return the exit status
int run(int& argc, char** argv, bool showWindow, bool login);

} // namespace ApplicationDelegate
} // namespace varnet
