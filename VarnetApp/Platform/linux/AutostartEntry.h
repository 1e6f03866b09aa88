#pragma once

#include <string>
#include <string_view>

namespace varnet::platform {

/// What a .desktop file in an autostart folder says.
struct AutostartEntry {
    std::string exec;    ///< command line, still quoted
    bool masked = false; ///< switched off, as desktops' own settings do it

    /// Whether it starts a program quietly.
    /// @param executable absolute path
    bool starts(const std::string& executable) const;
};

/// Total: a text that is no entry starts nothing.
AutostartEntry parseAutostartEntry(std::string_view text);

/// The entry that starts a program quietly.
/// @param executable absolute path, valid UTF-8
std::string autostartEntryText(std::string_view executable);

} // namespace varnet::platform
