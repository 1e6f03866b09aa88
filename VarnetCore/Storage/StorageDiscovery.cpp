// How a scanner finds the project folders.

#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Storage/GitOutput.h"
#include "VarnetCore/Storage/StoragePaths.h"
#include "VarnetCore/Storage/StorageScanner.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <memory>
#include <unordered_set>
#include <utility>

namespace varnet {

namespace {

constexpr int deepest = 5;                 // folders below a location, where searching ends
constexpr std::size_t stopInterval = 1024; // entries of a list between two looks at the token
constexpr std::array markers{"package.json", "Package.swift", "Cargo.toml", "pyproject.toml", "go.mod"};

/// Folders that hold no projects to be looked for.
constexpr std::array<std::string_view, 12> skips{"node_modules", ".git",   ".build",  "build",
                                                 "dist",         "target", ".venv",   "venv",
                                                 ".next",        ".turbo", "Library", ".Trash"};

bool exists(const std::string& path) {
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0;
}

bool isDirectory(const std::string& path) {
    return DiskIdentity::read(path).has_value();
}

bool isProject(const std::string& folder) {
    const auto has = [&folder](const char* name) { return exists(folder + '/' + name); };
    return has(".git") || std::ranges::any_of(markers, has);
}

bool isSelfOrParent(std::string_view name) noexcept {
    return name == "." || name == "..";
}

} // namespace

void StorageScanner::discover(const std::string& url, const std::string& source, int depth) {
    if (stopped()) {
        scan_.partial = true;
        return;
    }
    std::string canonical = StoragePaths::canonical(url);
    if (discovered_.visited.contains(canonical) || !isDirectory(canonical)) return;
    discovered_.visited.insert(canonical);
    ++visitedEntries_;
    if (canonical == conductorBase_) {
        for (const std::string& child : children(url))
            discover(child, std::string(conductor), 0);
        return;
    }
    auto container = conductorContainer(canonical);
    if (container == canonical) {
        discovered_.folders[canonical] = {std::string(conductor), container};
        for (const std::string& child : children(url))
            discovered_.folders[StoragePaths::canonical(child)] = {std::string(conductor), container};
        return;
    }
    if (isProject(canonical)) {
        std::string label = container ? std::string(conductor) : source;
        discovered_.folders[std::move(canonical)] = {std::move(label), std::move(container)};
        const std::string worktrees = url + "/.claude/worktrees";
        if (includeRelated_ && exists(worktrees)) discover(worktrees, "Claude Code", 0);
        return;
    }
    if (depth >= deepest) {
        discovered_.folders[std::move(canonical)].source = source;
        return;
    }
    for (const std::string& child : children(url)) {
        if (stopped()) {
            scan_.partial = true;
            return;
        }
        const std::string_view name = LexicalPath::lastComponent(child);
        if (std::ranges::find(skips, name) != skips.end() || name.ends_with(".app")) continue;
        if (isDirectory(child)) discover(child, source, depth + 1);
    }
}

/// The folders directly in a folder, without links, in ascending order.
std::vector<std::string> StorageScanner::children(const std::string& url) {
    std::vector<std::string> paths;
    const std::unique_ptr<DIR, int (*)(DIR*)> list(::opendir(url.c_str()), ::closedir);
    const std::string prefix = url.ends_with('/') ? url : url + '/';
    std::size_t read = 0;
    bool failed = !list;
    while (!failed) {
        errno = 0;
        const dirent* const entry = ::readdir(list.get());
        if (entry == nullptr) {
            failed = errno != 0;
            break;
        }
        if (++read % stopInterval == 0 && stopped()) {
            scan_.partial = true;
            break;
        }
        const bool mayBeFolder = entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN;
        if (!mayBeFolder || isSelfOrParent(entry->d_name)) continue;
        std::string path = prefix + entry->d_name;
        if (entry->d_type == DT_DIR || isDirectory(path)) paths.push_back(std::move(path));
    }
    if (failed) {
        scan_.partial = true;
        scan_.notes.push_back("Couldn’t read " + std::string(LexicalPath::lastComponent(url)) +
                              ". Add that folder to grant access.");
        return {};
    }
    std::ranges::sort(paths);
    return paths;
}

std::optional<std::string> StorageScanner::conductorContainer(std::string_view path) const {
    if (!path.starts_with(conductorBase_) || path.substr(conductorBase_.size()).substr(0, 1) != "/") {
        return std::nullopt;
    }
    path.remove_prefix(conductorBase_.size());
    const std::size_t begin = path.find_first_not_of('/');
    if (begin == std::string_view::npos) return std::nullopt;
    path.remove_prefix(begin);
    return conductorBase_ + '/' + std::string(path.substr(0, path.find('/')));
}

/// Worktrees that the found repositories know of, wherever they are.
void StorageScanner::addRelatedWorktrees() {
    std::vector<std::string> found;
    for (const auto& [path, folder] : discovered_.folders) {
        if (folder.container != path) found.push_back(path);
    }
    std::unordered_set<std::string> asked;
    for (const std::string& path : found) {
        if (stopped()) return;
        const auto resolved = resolver_.resolve(path, setup_.clock.now());
        if (!asked.insert(resolved ? resolved->repository : path).second) continue;
        const auto answer = git_.run(path, {"worktree", "list", "--porcelain", "-z"},
                                     StorageGit::standardTimeout, setup_.token.get());
        if (!answer || answer->code != 0) continue;
        for (const std::string& worktree : GitOutput::worktrees(answer->output))
            addRelated(worktree);
    }
}

void StorageScanner::addRelated(const std::string& worktree) {
    std::string path = StoragePaths::canonical(worktree);
    if (discovered_.folders.contains(path) || !isDirectory(path)) return;
    auto container = conductorContainer(path);
    std::string source(container ? conductor : std::string_view("Related worktree"));
    discovered_.folders[std::move(path)] = {std::move(source), std::move(container)};
}

} // namespace varnet
