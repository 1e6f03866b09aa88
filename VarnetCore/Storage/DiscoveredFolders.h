#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_set>

namespace varnet {

/// The project folders that a scan has found, in ascending order of their paths.
struct DiscoveredFolders {
    struct Folder {
        std::string source;
        std::optional<std::string> container;
    };

    std::map<std::string, Folder, std::less<>> folders; ///< by canonical path
    std::unordered_set<std::string> visited;            ///< searched, whether a project or not
};

} // namespace varnet
