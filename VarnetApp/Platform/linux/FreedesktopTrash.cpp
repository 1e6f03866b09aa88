#include "VarnetApp/Platform/linux/FreedesktopTrash.h"

#include "VarnetApp/Platform/DesktopTrash.h"
#include "VarnetApp/Platform/linux/TrashFolder.h"

#include <cstdlib>
#include <utility>

namespace varnet::platform {

namespace {

std::string absoluteFromEnvironment(const char* name) {
    const char* const value = std::getenv(name); // nobody sets it while the program runs
    return value != nullptr && *value == '/' ? value : "";
}

} // namespace

std::expected<std::optional<std::string>, std::string>
FreedesktopTrash::moveToTrash(const std::string& path, const DiskIdentity& identity) {
    const auto folder = TrashedFolder::hold(path, identity);
    if (!folder) return std::unexpected(folder.error());
    std::string reason;
    if (!homeTrash_.empty()) {
        const auto home = TrashFolder::ofHome(homeTrash_);
        if (home) {
            auto taken = home->take(*folder);
            if (taken) return *std::move(taken);
            if (taken.error().refusal != TrashFolder::Refusal::otherVolume) {
                return std::unexpected(std::move(taken).error().text);
            }
        } else {
            reason = home.error();
        }
    }
    const auto mount = TrashFolder::ofMount(*folder);
    if (!mount) return std::unexpected(reason.empty() ? mount.error() : reason);
    auto taken = mount->take(*folder);
    if (!taken) return std::unexpected(std::move(taken).error().text);
    return *std::move(taken);
}

std::unique_ptr<Trash> makeTrash() {
    std::string data = absoluteFromEnvironment("XDG_DATA_HOME");
    if (data.empty()) {
        data = absoluteFromEnvironment("HOME");
        if (!data.empty()) data += "/.local/share";
    }
    return std::make_unique<FreedesktopTrash>(data.empty() ? data : data + "/Trash");
}

} // namespace varnet::platform
