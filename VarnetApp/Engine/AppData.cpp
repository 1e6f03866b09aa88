#include "VarnetApp/Engine/AppData.h"

#include <pwd.h>
#include <stdlib.h>
#include <unistd.h>

namespace varnet::AppData {

std::filesystem::path home() {
    const char* const value = getenv("HOME");
    // One that is not absolute is to be ignored.
    if (std::filesystem::path folder = value != nullptr ? value : ""; folder.is_absolute()) return folder;
    const passwd* const user = getpwuid(getuid());
    return user != nullptr && user->pw_dir != nullptr ? user->pw_dir : "";
}

} // namespace varnet::AppData
