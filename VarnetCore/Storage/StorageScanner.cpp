#include "VarnetCore/Storage/StorageScanner.h"

#include "VarnetCore/Base/LexicalPath.h"
#include "VarnetCore/Storage/ProjectMeasure.h"
#include "VarnetCore/Storage/StoragePaths.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace varnet {

namespace {

constexpr double publishPause = 0.5;          // seconds between two publications of one project
constexpr std::int64_t publishInterval = 512; // entries between two looks at the clock

bool isDirectory(const std::string& path) {
    return DiskIdentity::read(path).has_value();
}

bool isRegularFile(const std::string& path) {
    struct stat status{};
    return ::lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

StorageScanner::StorageScanner(Setup setup)
    : setup_(std::move(setup)), git_(setup_.git ? *setup_.git : StorageGit(setup_.home)),
      deadline_(setup_.seconds ? std::optional(setup_.clock.now() + *setup_.seconds) : std::nullopt),
      conductorBase_(StoragePaths::canonical(setup_.home + "/conductor/workspaces")), resolver_(setup_.home) {
}

bool StorageScanner::stopped() const {
    if (setup_.token->cancelled()) return true;
    if (deadline_ && setup_.clock.now() > *deadline_) return true;
    return setup_.entryLimit && visitedEntries_ >= *setup_.entryLimit;
}

StorageScan StorageScanner::scan(const std::vector<StorageLocation>& locations, RelatedWorktrees related,
                                 const Progress& progress, const Update& update) {
    scan_ = {};
    scan_.date = setup_.clock.now();
    includeRelated_ = related == RelatedWorktrees::include;
    for (const StorageLocation& location : locations) {
        if (stopped()) {
            scan_.partial = true;
            break;
        }
        std::string path = StoragePaths::canonical(location.path);
        if (!isDirectory(path)) continue;
        scan_.locations.push_back({path, location.source});
        discover(path, location.source, 0);
    }
    if (includeRelated_) addRelatedWorktrees();
    for (const auto& [path, folder] : discovered_.folders) {
        projectPaths_.insert(path);
        scan_.projects.push_back(descriptor(path, folder.source, folder.container));
    }
    // Until the end every published scan is partial; what it ends as is judged by what was found.
    const bool incomplete = std::exchange(scan_.partial, true);
    if (update) update(scan_);

    for (std::size_t index = 0; index < scan_.projects.size() && !stopped(); ++index) {
        if (progress) {
            const StorageProject& project = scan_.projects[index];
            progress(std::to_string(index + 1) + '/' + std::to_string(scan_.projects.size()) + " · " +
                     project.name + " · " + project.branch);
        }
        measure(index, update);
        if (update) update(scan_);
    }
    finish(incomplete);
    return std::move(scan_);
}

void StorageScanner::finish(bool incomplete) {
    std::vector<std::pair<std::uint64_t, std::size_t>> order;
    order.reserve(scan_.projects.size());
    for (std::size_t index = 0; index < scan_.projects.size(); ++index)
        order.emplace_back(scan_.projects[index].bytes(), index);
    // Found in ascending order of paths, which holds among equals.
    std::ranges::stable_sort(order, [](const auto& a, const auto& b) { return a.first > b.first; });
    std::vector<StorageProject> sorted;
    sorted.reserve(order.size());
    for (const auto& [bytes, index] : order)
        sorted.push_back(std::move(scan_.projects[index]));
    scan_.projects = std::move(sorted);

    const bool stoppedNow = stopped();
    scan_.partial = incomplete || stoppedNow || std::ranges::any_of(scan_.projects, [](const auto& project) {
                        return project.partial || !project.measured;
                    });
    if (stoppedNow) {
        scan_.notes.emplace_back(setup_.token->cancelled()
                                     ? "Scan stopped. Some folders are still unmeasured. Rescan to finish."
                                     : "Scan interrupted by its configured limit.");
    }
    std::ranges::sort(scan_.notes);
    const auto repeated = std::ranges::unique(scan_.notes);
    scan_.notes.erase(repeated.begin(), repeated.end());
    scan_.date = setup_.clock.now();
}

StorageProject StorageScanner::descriptor(const std::string& path, const std::string& source,
                                          const std::optional<std::string>& container) {
    StorageProject project;
    project.path = path;
    project.source = source;
    project.container = container;
    const bool shared = project.isContainer();
    const auto resolved = shared ? nullptr : resolver_.resolve(path, setup_.clock.now());
    project.name = resolved ? resolved->name : std::string(LexicalPath::lastComponent(path));
    if (resolved) project.repository = resolved->repository;
    if (shared) {
        project.branch = "Shared files";
    } else {
        project.branch = resolved ? resolved->worktree : "Local folder";
    }
    project.worktree = isRegularFile(path + "/.git");
    project.gitSummary = "Waiting for scan";
    return project;
}

void StorageScanner::measure(std::size_t index, const Update& update) {
    StorageProject project = scan_.projects[index];
    project.partial = false;
    project.gitSummary = "Measuring…";
    const auto walk = setup_.probes.walkDisk(project.path, DiskScope::everything);
    if (!walk) {
        project.partial = true;
        scan_.projects[index] = std::move(project);
        return;
    }
    ProjectMeasure measure(project.path, seenLinks_);
    bool unreadable = false;
    Date published = setup_.clock.now();
    VNDiskEntry entry{};
    for (;;) {
        const std::int32_t step = walk->next(entry);
        if (step <= 0) {
            unreadable |= step < 0;
            break;
        }
        if (stopped()) {
            unreadable = true;
            break;
        }
        ++visitedEntries_;
        if (entry.path == nullptr) {
            unreadable = true;
            continue;
        }
        const std::string_view path(entry.path);
        if (path.size() != project.path.size() && projectPaths_.contains(path)) {
            walk->skip();
            measure.leaveOut(path);
            continue;
        }
        if (entry.kind == VN_DISK_ERROR) {
            unreadable = true;
            continue;
        }
        measure.add(entry, path);
        if (!update || visitedEntries_ % publishInterval != 0) continue;
        const Date now = setup_.clock.now();
        if (now - published <= publishPause) continue;
        published = now;
        scan_.projects[index] = project;
        measure.writeTo(scan_.projects[index]);
        scan_.projects[index].partial = true;
        update(scan_);
    }
    measure.writeTo(project);
    project.partial = unreadable || measure.lengthsOverflow();
    project.measured = !stopped();
    if (project.isContainer()) {
        project.gitSummary = "Shared files outside worktrees";
    } else {
        project.gitSummary = project.measured ? git_.summary(project.path, setup_.token.get())
                                              : std::string(StorageGit::unavailable);
    }
    if (!project.partial && !stopped()) addCandidates(project, measure);
    scan_.projects[index] = std::move(project);
}

void StorageScanner::addCandidates(StorageProject& project, const ProjectMeasure& measure) {
    std::vector<const ProjectMeasure::Root*> roots;
    for (const ProjectMeasure::Root& root : measure.roots())
        roots.push_back(&root);
    std::ranges::sort(roots, {},
                      [](const ProjectMeasure::Root* root) { return std::string_view(root->path); });
    for (const ProjectMeasure::Root* const root : roots) {
        if (stopped()) {
            project.partial = true;
            project.candidates.clear();
            return;
        }
        // What lies in a repository's own data is no dependency or cache, whatever it is called.
        const bool offered = !root->nested && root->bucket != StorageBucket::git;
        if (!offered || root->identity.owner != getuid() || root->bytes == 0) continue;
        if (!git_.ignoredAndUntracked(root->path, project.path, setup_.token.get())) continue;
        project.candidates.push_back({root->path, project.path, root->bucket, root->bytes, root->identity});
    }
}

} // namespace varnet
