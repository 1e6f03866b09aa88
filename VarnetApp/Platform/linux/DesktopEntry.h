#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varnet::platform {

/// What one .desktop file says about an application. Texts that the file lacks are empty.
struct DesktopEntry {
    std::string name;    ///< display name in the best language there is, one line of valid UTF-8
    std::string exec;    ///< command line, still quoted
    std::string tryExec; ///< program whose absence means that the application is not installed
    std::string icon;    ///< name in the icon theme, or absolute path
    std::string flatpak; ///< id of the Flatpak that exported the file
    std::string snap;    ///< instance name of the Snap that installed it
    std::string snapApp; ///< the program inside that Snap
    bool hidden = false; ///< stands for "deleted", so that a user can mask a file of the system
    bool noDisplay = false;
    bool terminal = false;
};

/// The language tags under which to look for translated texts, best first.
/// @param locale as in the environment, such as "cs_CZ.UTF-8@euro"; empty, "C" and "POSIX" give none
std::vector<std::string> localeTags(std::string_view locale);

/// @return empty when the text is no application's entry
std::optional<DesktopEntry> parseDesktopEntry(std::string_view text, std::span<const std::string> localeTags);

} // namespace varnet::platform
