#pragma once

#include <expected>
#include <memory>
#include <string>

namespace varnet::platform {

enum class LoginItemStatus {
    notRegistered,
    enabled,
    requiresApproval, ///< registered, but switched off in the desktop's own settings
    notFound,         ///< this program or the place for login items is not known, so there can be none
};

/// Starting this program, with `--login`, when its user logs in. Each call looks at the system anew.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    /// An item that starts the program from another place counts as not registered, so that registering
    /// renews it.
    virtual LoginItemStatus status() const = 0;

    /// What the user has switched off in the desktop's settings stays off.
    /// @return the system's own words for what went wrong; nothing has changed then
    virtual std::expected<void, std::string> registerItem() = 0;
    /// Fine when there is none.
    virtual std::expected<void, std::string> unregisterItem() = 0;

    /// Opens the desktop's settings of what starts at login. @return false when it has none that are known
    virtual bool openSettings() = 0;
};

/// That of this program and user, as the environment is now.
std::unique_ptr<LoginItem> makeLoginItem();

} // namespace varnet::platform
