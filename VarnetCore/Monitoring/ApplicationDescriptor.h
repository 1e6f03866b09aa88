#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

namespace varnet {

/// One running application that a user would call by name.
struct ApplicationDescriptor {
    std::string bundlePath; ///< absolute path of what identifies it: the bundle, here its .desktop file
    std::string bundleID;   ///< identifier, here the desktop file id without its suffix
    std::string name;       ///< display name
    std::int32_t pid = 0;   ///< its main process
    /// The main process's start, as ProcessIdentity::start; guards against a reused pid. Empty: not known.
    std::optional<std::uint64_t> processStart;

    friend auto operator<=>(const ApplicationDescriptor&, const ApplicationDescriptor&) = default;
};

} // namespace varnet
