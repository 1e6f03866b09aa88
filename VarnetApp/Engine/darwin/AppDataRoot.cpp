#include "VarnetApp/Engine/AppData.h"

namespace varnet::AppData {

std::filesystem::path root() {
    return home() / "Library/Application Support/Varnet";
}

} // namespace varnet::AppData
