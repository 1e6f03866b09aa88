#pragma once

#include "VarnetApp/Platform/LoginItem.h"

#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet::platform {

/// The login item as a file in the user's autostart folder.
class AutostartLoginItem final : public LoginItem {
public:
    struct Parts {
        std::string executable;            ///< absolute path of this program; empty when not known
        std::string configHome;            ///< absolute path; empty when there is none
        std::vector<std::string> desktops; ///< names of the desktop that runs, the most exact first
        std::vector<std::string> programs; ///< folders in which programs are looked up

        /// @param environment the value of a variable, empty when unset
        static Parts from(std::string executable,
                          const std::function<std::string(std::string_view)>& environment);
    };

    explicit AutostartLoginItem(Parts parts);

    LoginItemStatus status() const override;
    std::expected<void, std::string> registerItem() override;
    std::expected<void, std::string> unregisterItem() override;
    bool openSettings() override;

private:
    const Parts parts_;
    const std::string folder_;
    const std::string file_; ///< empty when there can be none
};

} // namespace varnet::platform
