#include "VarnetCore/Storage/StoragePaths.h"

#include "VarnetCore/Base/LexicalPath.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>

namespace varnet::StoragePaths {

std::vector<StorageLocation> defaults(std::string_view home) {
    const std::string folder(home);
    return {{folder + "/conductor/workspaces", "Conductor"},
            {folder + "/.codex/worktrees", "Codex"},
            {folder + "/.cursor/worktrees", "Cursor"}};
}

std::string canonical(const std::string& path) {
    if (path.find('\0') == std::string::npos) {
        const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
        if (real) return real.get();
    }
    return LexicalPath::standardized(path);
}

bool contains(std::string_view path, std::string_view root) noexcept {
    return path.starts_with(root) && (path.size() == root.size() || path[root.size()] == '/');
}

StorageBucket bucket(std::string_view relativePath) noexcept {
    bool dependencies = false;
    bool caches = false;
    std::string_view before;
    while (!relativePath.empty()) {
        const std::size_t slash = std::min(relativePath.find('/'), relativePath.size());
        const std::string_view part = relativePath.substr(0, slash);
        relativePath.remove_prefix(std::min(slash + 1, relativePath.size()));
        if (part.empty()) continue;
        if (part == ".git") return StorageBucket::git;
        if (part == "node_modules") dependencies = true;
        if (part == ".turbo" || (before == ".next" && part == "cache")) caches = true;
        before = part;
    }
    if (dependencies) return StorageBucket::dependencies;
    return caches ? StorageBucket::caches : StorageBucket::files;
}

} // namespace varnet::StoragePaths
