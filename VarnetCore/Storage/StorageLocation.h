#pragma once

#include <string>

namespace varnet {

/// A folder to search for projects.
struct StorageLocation {
    std::string path;
    std::string source; ///< what projects found below it are labelled with

    const std::string& id() const noexcept { return path; }

    friend bool operator==(const StorageLocation&, const StorageLocation&) = default;
};

} // namespace varnet
