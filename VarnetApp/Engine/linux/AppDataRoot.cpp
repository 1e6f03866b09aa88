#include "VarnetApp/Engine/AppData.h"

#include <stdlib.h>

namespace varnet::AppData {

std::filesystem::path root() {
    const char* const value = getenv("XDG_DATA_HOME");
    std::filesystem::path data = value != nullptr ? value : "";
    if (!data.is_absolute()) data = home() / ".local/share";
    return data / "Varnet";
}

} // namespace varnet::AppData
