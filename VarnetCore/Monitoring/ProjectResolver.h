#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/Project.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace varnet {

/// Turns a working directory into the project it belongs to: the Git checkout around it or, failing that,
/// the nearest folder with a manifest. Reads a few small files and never runs Git. Not thread safe: each
/// user holds an instance of its own.
class ProjectResolver {
public:
    /// @param home the user's home directory, which itself is never a project
    explicit ProjectResolver(const std::string& home);

    /// The project of an absolute path; null when it belongs to none. Answers, also negative ones, are
    /// remembered for 30 seconds.
    std::shared_ptr<const Project> resolve(std::string_view path, Date now);

    /// Forgets every remembered answer.
    void invalidate() noexcept { cache_.clear(); }

    /// Remembered answers.
    std::size_t cached() const noexcept { return cache_.size(); }

private:
    struct Answer {
        Date date;
        std::shared_ptr<const Project> project;
    };

    /// Looks a path up without making a string of it.
    struct PathHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view path) const noexcept {
            return std::hash<std::string_view>()(path);
        }
    };

    std::shared_ptr<const Project> discover(std::string_view path) const;

    const std::string home_;                                                   ///< standardized
    std::unordered_map<std::string, Answer, PathHash, std::equal_to<>> cache_; ///< by the path as given
};

} // namespace varnet
