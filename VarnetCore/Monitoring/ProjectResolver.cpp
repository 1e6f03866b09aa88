#include "VarnetCore/Monitoring/ProjectResolver.h"

#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Base/SmallFile.h"
#include "VarnetCore/Monitoring/Detector.h"
#include "VarnetCore/Monitoring/GitCheckout.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>

namespace varnet {
namespace {

constexpr double freshFor = 30;           // seconds
constexpr std::size_t cacheLimit = 2001;  // entries
constexpr int highestLevel = 30;          // directories looked at, the first included
constexpr std::size_t fileLimit = 65'536; // bytes

constexpr std::array manifests{"package.json",   "Package.swift", "Cargo.toml",
                               "pyproject.toml", "go.mod",        "Gemfile"};

enum class Entry { missing, directory, other };

/// What a path leads to, through symbolic links: one that leads nowhere is missing.
Entry entryAt(const std::string& path) {
    struct stat status{};
    if (path.find('\0') != std::string::npos || ::stat(path.c_str(), &status) != 0) return Entry::missing;
    return S_ISDIR(status.st_mode) ? Entry::directory : Entry::other;
}

bool holdsManifest(const std::string& directory) {
    return std::any_of(manifests.begin(), manifests.end(), [&directory](const char* manifest) {
        return entryAt(directory + '/' + manifest) != Entry::missing;
    });
}

/// @param git what the directory's ".git" is; not missing
Project checkoutAt(const std::string& directory, Entry git) {
    std::string gitDirectory = directory + "/.git";
    if (git == Entry::other) {
        // A linked worktree or submodule: the file says where its Git directory is.
        if (const auto text = readSmallTextFile(gitDirectory, fileLimit)) {
            if (auto pointed = GitCheckout::gitDirectory(*text, directory))
                gitDirectory = *std::move(pointed);
        }
    }
    std::string repository = directory;
    if (const auto text = readSmallTextFile(gitDirectory + "/commondir", fileLimit)) {
        repository = LexicalPath::parent(GitCheckout::commonDirectory(*text, gitDirectory));
    }
    const auto head = readSmallTextFile(gitDirectory + "/HEAD", fileLimit);
    std::string name(LexicalPath::lastComponent(repository));
    return {directory, std::move(repository), std::move(name), GitCheckout::label(head.value_or(""))};
}

} // namespace

ProjectResolver::ProjectResolver(const std::string& home) : home_(LexicalPath::standardized(home)) {}

std::shared_ptr<const Project> ProjectResolver::resolve(std::string_view path, Date now) {
    if (const auto known = cache_.find(path); known != cache_.end() && now - known->second.date < freshFor) {
        return known->second.project;
    }
    std::shared_ptr<const Project> project = discover(path);
    if (cache_.size() >= cacheLimit) cache_.clear();
    cache_.insert_or_assign(std::string(path), Answer{now, project});
    return project;
}

std::shared_ptr<const Project> ProjectResolver::discover(std::string_view path) const {
    if (!path.starts_with('/') || Detector::isInstalledPluginDirectory(path)) return nullptr;
    std::string directory = LexicalPath::standardized(path);
    std::string candidate;
    for (int level = 0; level < highestLevel; ++level) {
        if (directory == "/" || directory == home_) break;
        if (const Entry git = entryAt(directory + "/.git"); git != Entry::missing) {
            return std::make_shared<const Project>(checkoutAt(directory, git));
        }
        if (candidate.empty() && holdsManifest(directory)) candidate = directory;
        directory.resize(LexicalPath::parent(directory).size());
    }
    if (candidate.empty()) return nullptr;
    return std::make_shared<const Project>(
        Project{candidate, candidate, std::string(LexicalPath::lastComponent(candidate)), "Local project"});
}

} // namespace varnet
