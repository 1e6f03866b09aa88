#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Storage/StorageBucket.h"
#include "VarnetCore/Storage/StorageCandidate.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// A project folder or an agent's worktree with the space that it occupies.
struct StorageProject {
    std::string path; ///< canonical, absolute
    /// "Conductor", "Codex", "Cursor", "Claude Code", "Related worktree" or the label of its location.
    std::string source;
    std::string name;
    std::string branch;    ///< or "Shared files", "Local folder"
    bool worktree = false; ///< a linked worktree of some repository
    StorageBuckets buckets;
    std::vector<StorageCandidate> candidates; ///< none unless measured completely
    bool partial = true;                      ///< the walk has not finished cleanly
    std::string gitSummary;                   ///< one line of its Git state
    std::optional<Date> lastModified;         ///< of its newest file of its own
    std::optional<std::string> repository;
    std::optional<std::string> container; ///< the folder that a workspace manager keeps it in
    bool measured = false;                ///< the scan has come to its end
    std::uint64_t logicalBytes = 0;       ///< sum of file lengths
    std::uint64_t entryCount = 0;         ///< entries seen

    const std::string& id() const noexcept { return path; }
    std::uint64_t bytes() const noexcept;
    std::uint64_t reviewBytes() const noexcept; ///< of its candidates
    /// The folder of a workspace manager itself, with the files that its worktrees share.
    bool isContainer() const noexcept { return container == path; }

    friend bool operator==(const StorageProject&, const StorageProject&) = default;
};

} // namespace varnet
