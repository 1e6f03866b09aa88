#include "VarnetApp/Platform/linux/AutostartLoginItem.h"

#include "VarnetApp/Platform/linux/AutostartEntry.h"
#include "VarnetApp/Platform/linux/DesktopPlaces.h"
#include "VarnetApp/Platform/linux/ProgramStart.h"
#include "VarnetCore/Base/AtomicFile.h"
#include "VarnetCore/Base/SmallFile.h"
#include "VarnetCore/Base/Utf8.h"
#include "probes/vn_probes.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <system_error>
#include <utility>

namespace varnet::platform {

namespace {

constexpr std::size_t longestEntry = 65'536; // bytes

std::unexpected<std::string> failure(const std::string& path, const std::string& words) {
    return std::unexpected(path + ": " + words);
}

std::unexpected<std::string> failure(const std::string& path, int error) {
    return failure(path, std::system_category().message(error));
}

/// Where a desktop lets its user choose what starts at login.
struct Settings {
    std::string_view desktop;
    std::string_view program;
    std::string_view argument; ///< empty: none
};

constexpr auto settings = std::to_array<Settings>({
    {"Budgie", "budgie-desktop-settings", ""},
    {"Cinnamon", "cinnamon-settings", "startup"},
    {"X-Cinnamon", "cinnamon-settings", "startup"},
    {"GNOME", "gnome-session-properties", ""},
    {"GNOME", "gnome-tweaks", ""},
    {"KDE", "systemsettings", "kcm_autostart"},
    {"KDE", "systemsettings5", "kcm_autostart"},
    {"KDE", "kcmshell6", "kcm_autostart"},
    {"KDE", "kcmshell5", "kcm_autostart"},
    {"LXDE", "lxsession-edit", ""},
    {"LXQt", "lxqt-config-session", ""},
    {"MATE", "mate-session-properties", ""},
    {"Unity", "gnome-session-properties", ""},
    {"XFCE", "xfce4-session-settings", ""},
});

} // namespace

AutostartLoginItem::Parts
AutostartLoginItem::Parts::from(std::string executable,
                                const std::function<std::string(std::string_view)>& environment) {
    Parts parts{.executable = std::move(executable), .configHome = {}, .desktops = {}, .programs = {}};
    parts.configHome = environment("XDG_CONFIG_HOME");
    if (const std::string home = environment("HOME");
        !parts.configHome.starts_with('/')) { // relative ones are to be ignored
        parts.configHome = home.starts_with('/') ? home + "/.config" : std::string();
    }
    std::string names = environment("XDG_CURRENT_DESKTOP");
    for (std::size_t begin = 0; begin < names.size();) {
        const std::size_t end = std::min(names.find(':', begin), names.size());
        parts.desktops.push_back(names.substr(begin, end - begin));
        begin = end + 1;
    }
    parts.programs = DesktopPlaces::from(environment).programs;
    return parts;
}

AutostartLoginItem::AutostartLoginItem(Parts parts)
    : parts_(std::move(parts)), folder_(parts_.configHome + "/autostart"),
      file_(parts_.configHome.empty() || !parts_.executable.starts_with('/')
                ? std::string()
                : folder_ + "/com.varnet.Varnet.desktop") {}

LoginItemStatus AutostartLoginItem::status() const {
    if (file_.empty()) {
        return LoginItemStatus::notFound;
    }
    const auto text = readSmallFile(file_, longestEntry);
    const AutostartEntry entry = parseAutostartEntry(text.value_or(std::string()));
    if (entry.masked) {
        return LoginItemStatus::requiresApproval;
    }
    return entry.starts(parts_.executable) ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
}

std::expected<void, std::string> AutostartLoginItem::registerItem() {
    if (file_.empty()) {
        return failure("com.varnet.Varnet.desktop", ENOENT);
    }
    if (!isValidUtf8(parts_.executable)) {
        return failure(repairedUtf8(parts_.executable), EILSEQ); // no desktop reads such an entry
    }
    if (const LoginItemStatus now = status();
        now == LoginItemStatus::enabled || now == LoginItemStatus::requiresApproval) {
        return {};
    }
    struct stat info{};
    if (lstat(file_.c_str(), &info) == 0) {
        // A link is somebody's arrangement, and a file that its user must not write is no less one.
        if (S_ISLNK(info.st_mode)) {
            return failure(file_, "Is a symbolic link");
        }
        if (access(file_.c_str(), W_OK) != 0) {
            return failure(file_, errno);
        }
    }
    // An existing folder keeps its permissions: it is the desktop's, not ours.
    if (stat(folder_.c_str(), &info) != 0) {
        if (const auto words = AtomicFile::makePrivateFolder(folder_)) {
            return failure(folder_, *words);
        }
    }
    if (const auto words = AtomicFile::write(file_, autostartEntryText(parts_.executable))) {
        return failure(file_, *words);
    }
    return {};
}

std::expected<void, std::string> AutostartLoginItem::unregisterItem() {
    if (!file_.empty() && unlink(file_.c_str()) != 0 && errno != ENOENT && errno != ENOTDIR) {
        return failure(file_, errno);
    }
    return {};
}

bool AutostartLoginItem::openSettings() {
    for (const std::string& desktop : parts_.desktops) {
        for (const Settings& place : settings) {
            if (place.desktop != desktop) {
                continue;
            }
            const std::string program = findProgram(place.program, parts_.programs);
            const auto arguments = place.argument.empty()
                                       ? std::vector<std::string>()
                                       : std::vector<std::string>{std::string(place.argument)};
            if (!program.empty() && startProgram(program, arguments)) {
                return true;
            }
        }
    }
    return false;
}

std::unique_ptr<LoginItem> makeLoginItem() {
    std::array<char, VN_PATH_SIZE> path{};
    const bool known = vn_path(getpid(), path.data(), path.size()) == 0;
    return std::make_unique<AutostartLoginItem>(AutostartLoginItem::Parts::from(
        known ? std::string(path.data()) : std::string(), [](std::string_view variable) {
            const char* value = std::getenv(std::string(variable).c_str());
            return std::string(value != nullptr ? value : "");
        }));
}

} // namespace varnet::platform
