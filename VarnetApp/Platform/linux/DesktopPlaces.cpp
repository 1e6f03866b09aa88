#include "VarnetApp/Platform/linux/DesktopPlaces.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>

namespace varnet::platform {

namespace {

// A list from the environment is as long as somebody made it; nobody's desktop has this many folders.
constexpr std::size_t mostFolders = 256;

/// Adds a folder once. Relative ones depend on where the program was started and are ignored.
void addFolder(std::vector<std::string>& folders, std::string_view path) {
    if (!path.starts_with('/') || folders.size() >= mostFolders) {
        return;
    }
    std::string folder = std::filesystem::path(path).lexically_normal().string();
    while (folder.size() > 1 && folder.back() == '/') {
        folder.pop_back();
    }
    if (std::find(folders.begin(), folders.end(), folder) == folders.end()) {
        folders.push_back(std::move(folder));
    }
}

void addList(std::vector<std::string>& folders, std::string_view list, std::string_view subfolder) {
    while (!list.empty()) {
        const std::size_t colon = list.find(':');
        const std::string_view folder = list.substr(0, colon);
        list.remove_prefix(colon == std::string_view::npos ? list.size() : colon + 1);
        if (!folder.empty()) {
            addFolder(folders, std::string(folder) + std::string(subfolder));
        }
    }
}

} // namespace

DesktopPlaces DesktopPlaces::from(const std::function<std::string(std::string_view)>& environment) {
    const auto either = [&](std::string_view variable, std::string fallback) {
        std::string value = environment(variable);
        return value.empty() ? std::move(fallback) : std::move(value);
    };
    const std::string home = environment("HOME");
    const std::string dataHome =
        either("XDG_DATA_HOME", home.empty() ? std::string() : home + "/.local/share");

    DesktopPlaces places;
    if (!dataHome.empty()) {
        addFolder(places.applications, dataHome + "/applications");
    }
    addList(places.applications, either("XDG_DATA_DIRS", "/usr/local/share:/usr/share"), "/applications");
    // Sessions started without a login shell lack these in the list above.
    if (!dataHome.empty()) {
        addFolder(places.applications, dataHome + "/flatpak/exports/share/applications");
    }
    addFolder(places.applications, "/var/lib/flatpak/exports/share/applications");
    addFolder(places.applications, "/var/lib/snapd/desktop/applications");

    addList(places.programs, either("PATH", "/usr/local/bin:/usr/bin:/bin:/usr/games"), "");
    places.locale = either("LC_ALL", either("LC_MESSAGES", environment("LANG")));
    return places;
}

DesktopPlaces DesktopPlaces::current() {
    return from([](std::string_view variable) {
        const char* value = std::getenv(std::string(variable).c_str());
        return std::string(value != nullptr ? value : "");
    });
}

} // namespace varnet::platform
