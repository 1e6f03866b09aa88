#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet::platform {

/// Where and in which language installed applications are looked up. Folders are absolute, without a slash at
/// the end, the most important first.
struct DesktopPlaces {
    std::vector<std::string> applications; ///< folders of .desktop files
    std::vector<std::string> programs;     ///< folders in which a bare program name is looked up
    std::string locale;                    ///< as in the environment, such as "cs_CZ.UTF-8"

    /// @param environment the value of a variable, empty when unset
    static DesktopPlaces from(const std::function<std::string(std::string_view)>& environment);
    /// Those of this process.
    static DesktopPlaces current();
};

} // namespace varnet::platform
