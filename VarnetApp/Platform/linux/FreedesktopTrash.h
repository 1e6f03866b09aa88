#pragma once

#include "VarnetCore/Storage/Trash.h"

#include <string>

namespace varnet::platform {

/// The trash folders that Linux desktops share. A folder goes to the one of its own file system: the user's
/// home trash, else the one at the top of the mount that it lies in. It is renamed and nothing else, with a
/// note beside it that says where it came from.
class FreedesktopTrash final : public Trash {
public:
    /// @param homeTrash absolute; made with the first use. Empty: there is none
    explicit FreedesktopTrash(std::string homeTrash) : homeTrash_(std::move(homeTrash)) {}

    std::expected<std::optional<std::string>, std::string> moveToTrash(const std::string& path,
                                                                       const DiskIdentity& identity) override;

private:
    const std::string homeTrash_;
};

} // namespace varnet::platform
