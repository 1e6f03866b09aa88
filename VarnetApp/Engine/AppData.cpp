#include "VarnetApp/Engine/AppData.h"

#include <pwd.h>
#include <stdlib.h>
#include <unistd.h>

namespace varnet::AppData {

namespace {

/// A folder from the environment; one that is not absolute is to be ignored.
std::filesystem::path folderFromEnvironment(const char* variable) {
    const char* const value = getenv(variable);
    std::filesystem::path folder = value != nullptr ? value : "";
    return folder.is_absolute() ? folder : std::filesystem::path();
}

} // namespace

std::filesystem::path home() {
    if (auto folder = folderFromEnvironment("HOME"); !folder.empty()) return folder;
    const passwd* const user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "";
}

std::filesystem::path root() {
    std::filesystem::path data = folderFromEnvironment("XDG_DATA_HOME");
    if (data.empty()) data = home() / ".local/share";
    return data / "Varnet";
}

} // namespace varnet::AppData
