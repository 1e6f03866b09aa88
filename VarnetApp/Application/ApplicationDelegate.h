#pragma once

namespace varnet::ApplicationDelegate {

/// How the program was started.
struct Start {
    bool showWindow = false;   ///< the main window opens whatever started the program
    bool showSettings = false; ///< so do the settings
    bool login = false;        ///< the desktop did, with the session
};

/// Runs the program: tray, windows, sampling, until the user quits it. A second start asks the first for its
/// window, or for its settings, and ends. @return the exit status
int run(int& argc, char** argv, const Start& start);

} // namespace varnet::ApplicationDelegate
