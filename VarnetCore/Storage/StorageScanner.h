#pragma once

#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/ProjectResolver.h"
#include "VarnetCore/Storage/DiscoveredFolders.h"
#include "VarnetCore/Storage/FileKey.h"
#include "VarnetCore/Storage/StorageCancellation.h"
#include "VarnetCore/Storage/StorageGit.h"
#include "VarnetCore/Storage/StorageLocation.h"
#include "VarnetCore/Storage/StorageScan.h"
#include "probes/Probes.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace varnet {

class ProjectMeasure;

enum class RelatedWorktrees { leave, include };

/// Finds the project folders below some locations and measures each with one walk. Changes nothing on disk.
/// One object serves one scan, on one background thread.
class StorageScanner {
public:
    struct Setup {
        std::shared_ptr<const StorageCancellation> token; ///< not null
        Probes& probes;                                   ///< only walks are asked for
        const Clock& clock;
        std::string home;                       ///< the user's home directory
        std::optional<double> seconds;          ///< the scan ends by itself after so long
        std::optional<std::int64_t> entryLimit; ///< and after so many entries
        std::optional<StorageGit> git;          ///< empty: this machine's
    };

    /// One line for the user, on the scanning thread: which project is being measured.
    using Progress = std::function<void(const std::string& text)>;
    /// The whole scan as it stands, on the scanning thread; the reference lives for the call alone.
    using Update = std::function<void(const StorageScan& scan)>;

    explicit StorageScanner(Setup setup);

    /// Scans until it is through or stopped; what was not measured then says so.
    /// @param related whether worktrees that Git knows of besides those found are measured too
    StorageScan scan(const std::vector<StorageLocation>& locations, RelatedWorktrees related,
                     const Progress& progress = {}, const Update& update = {});

    /// The folder that the workspace manager keeps for the repository of a path; empty elsewhere.
    std::optional<std::string> conductorContainer(std::string_view path) const;

private:
    bool stopped() const;
    void discover(const std::string& url, const std::string& source, int depth);
    std::vector<std::string> children(const std::string& url);
    void addRelatedWorktrees();
    void addRelated(const std::string& worktree);
    StorageProject descriptor(const std::string& path, const std::string& source,
                              const std::optional<std::string>& container);
    void measure(std::size_t index, const Update& update);
    void addCandidates(StorageProject& project, const ProjectMeasure& measure);
    void finish(bool incomplete);

    static constexpr std::string_view conductor = "Conductor"; ///< source of what that manager keeps

    // Constant after construction.
    const Setup setup_;
    const StorageGit git_;
    const std::optional<Date> deadline_;
    const std::string conductorBase_;
    // The scan's own.
    StorageScan scan_;
    DiscoveredFolders discovered_;
    bool includeRelated_ = false;
    std::int64_t visitedEntries_ = 0;
    std::unordered_set<std::string_view> projectPaths_; ///< of all projects; the texts are discovered_'s
    std::unordered_set<FileKey> seenLinks_;             ///< for the whole scan: a shared file counts once
    ProjectResolver resolver_;
};

} // namespace varnet
