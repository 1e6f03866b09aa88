#pragma once

#include "VarnetCore/Storage/StorageCancellation.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// The one place that runs Git. Repositories belong to anybody, and what their configuration names must not
/// run, ask, wait or lock: a fixed command prefix, six environment variables, no terminal, a short limit,
/// bounded output, and where the kernel offers it a confinement in which nothing but Git itself can be
/// executed and nothing written. Every failure is an empty answer, which means "not known" and never
/// "cleared". Blocks its thread, so for background work; may be used from several threads at once.
class StorageGit {
public:
    struct Result {
        std::int32_t code = 0; ///< exit status
        std::string output;    ///< standard output, at most 4,000,000 bytes

        /// The output as UTF-8, repaired, without white space around it.
        std::string text() const;
    };

    static constexpr double standardTimeout = 3; ///< seconds
    static constexpr std::string_view unavailable = "Git status unavailable";

    /// Where Git is installed; empty when it is not. PATH is not consulted. Looked up once.
    static const std::optional<std::string>& executable();

    /// @param home the user's home directory, where Git finds the user's own settings
    /// @param program absolute path of Git; empty: every run gives nothing
    explicit StorageGit(std::string home, std::optional<std::string> program = executable());

    /// @param repository folder in which the command runs
    /// @param arguments what follows the fixed prefix
    /// @param timeout seconds
    /// @param token ends the command at once when it is cancelled; null: never
    /// @return empty without an answer in time and in bounds
    std::optional<Result> run(const std::string& repository, const std::vector<std::string>& arguments,
                              double timeout = standardTimeout,
                              const StorageCancellation* token = nullptr) const;

    /// Whether Git says positively that a folder is ignored and that nothing in it is tracked.
    /// @param path below the repository's folder
    bool ignoredAndUntracked(const std::string& path, const std::string& repository,
                             const StorageCancellation* token = nullptr) const;

    /// One line on uncommitted files and unpushed commits.
    std::string summary(const std::string& repository, const StorageCancellation* token = nullptr) const;

private:
    std::string home_;
    std::optional<std::string> program_;
};

} // namespace varnet
