#pragma once

#include <string>

namespace varnet {

/// The Git checkout (or, without one, the folder with a manifest) that a process works in.
struct Project {
    std::string root;       ///< absolute path of the working tree
    std::string repository; ///< the repository's common root; equals `root` for a plain clone
    std::string name;       ///< display name
    std::string worktree;   ///< branch or worktree label

    const std::string& id() const noexcept { return root; }

    friend bool operator==(const Project&, const Project&) = default;
};

} // namespace varnet
