#pragma once

#include "VarnetCore/Storage/StorageCandidate.h"
#include "VarnetCore/Storage/StorageCleanupError.h"
#include "VarnetCore/Storage/StorageGit.h"
#include "VarnetCore/Storage/Trash.h"
#include "probes/Probes.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varnet {

/// Moves reviewed folders to the Trash, the one act of project storage that changes the disk. Trusts nothing
/// that a scan said: every check is made anew, and one that cannot be finished refuses. Blocks its thread, so
/// for background work.
class StorageCleanup {
public:
    struct Setup {
        Probes& probes; ///< only walks are asked for
        Trash& trash;
        StorageGit git;
        double contentsTimeout = 20; ///< seconds for looking through a folder
    };

    /// Where processes stand at the moment of the call; an error refuses the move.
    using ActivePaths = std::function<std::expected<std::vector<std::string>, StorageCleanupError>()>;

    struct Failure {
        std::optional<StorageCleanupError> refusal; ///< empty: the Trash itself has failed
        std::string text;                           ///< for the user
    };

    /// What a batch came to.
    struct Outcome {
        std::size_t moved = 0;
        std::uint64_t bytes = 0;                 ///< of what moved
        std::vector<std::string> failures;       ///< a line each: relative path, ": ", why
        std::vector<std::string> trashLocations; ///< of what moved, as far as known
    };

    explicit StorageCleanup(Setup setup);

    /// Whether a candidate may move now, with processes at the given paths. Changes nothing.
    std::expected<void, StorageCleanupError> validate(const StorageCandidate& candidate,
                                                      std::span<const std::string> activePaths) const;

    /// Validates and moves one candidate.
    /// @param activePaths asked twice, the second time right before the move
    /// @return where it now is, when that is known
    std::expected<std::optional<std::string>, Failure> moveToTrash(const StorageCandidate& candidate,
                                                                   const ActivePaths& activePaths) const;

    /// Moves candidates one by one, each validated at its own moment; goes on after a failure.
    Outcome clean(std::span<const StorageCandidate> candidates, const ActivePaths& activePaths) const;

private:
    std::expected<void, StorageCleanupError> checkContents(const std::string& path,
                                                           std::int32_t device) const;

    Setup setup_;
};

} // namespace varnet
