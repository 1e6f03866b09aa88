// Scans of real folders; the walk alone is pretended where it has to fail.

#include "VarnetCore/Storage/StoragePaths.h"
#include "VarnetCore/Storage/StorageScanner.h"
#include "probes/SystemProbes.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/GitCheckoutFolder.h"
#include "tests/fakes/WithoutPrivilege.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace varnet {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class StorageScannerTest : public testing::Test {
protected:
    std::unique_ptr<StorageScanner> scanner(std::optional<std::int64_t> entryLimit = {},
                                            std::optional<double> seconds = {}) {
        return std::make_unique<StorageScanner>(StorageScanner::Setup{.token = token_,
                                                                      .probes = *probes_,
                                                                      .clock = clock_,
                                                                      .home = home_.home(),
                                                                      .seconds = seconds,
                                                                      .entryLimit = entryLimit,
                                                                      .git = {}});
    }

    StorageScan scan(const std::vector<std::string>& below,
                     RelatedWorktrees related = RelatedWorktrees::leave,
                     const StorageScanner::Update& update = {}) {
        return scanner()->scan(locations(below), related, {}, update);
    }

    std::vector<StorageLocation> locations(const std::vector<std::string>& below) const {
        std::vector<StorageLocation> list;
        for (const std::string& path : below)
            list.push_back({home_.path(path), "Local folder"});
        return list;
    }

    /// "path below the home: source, branch" of every project, in order of paths.
    std::vector<std::string> found(const StorageScan& scan) const {
        std::vector<std::string> lines;
        for (const StorageProject& project : scan.projects) {
            lines.push_back(project.path.substr(home_.home().size() + 1) + ": " + project.source + ", " +
                            project.branch + (project.worktree ? ", worktree" : ""));
        }
        std::ranges::sort(lines);
        return lines;
    }

    const StorageProject& project(const StorageScan& scan, const std::string& below) const {
        const auto found = std::ranges::find(scan.projects, home_.path(below), &StorageProject::path);
        if (found == scan.projects.end()) throw std::runtime_error("no project " + below);
        return *found;
    }

    /// Paths below the project of what may be reviewed.
    std::vector<std::string> offered(const StorageScan& scan, const std::string& below) const {
        std::vector<std::string> paths;
        for (const StorageCandidate& candidate : project(scan, below).candidates)
            paths.push_back(candidate.relativePath());
        return paths;
    }

    /// The project at "p" as a pretended walk.
    FakeProbes& pretend(FakeTree tree) {
        home_.write("p/package.json", "{}");
        auto fake = std::make_unique<FakeProbes>();
        FakeProbes& probes = *fake;
        fake->trees[home_.path("p")] = std::move(tree);
        probes_ = std::move(fake);
        return probes;
    }

    const GitCheckoutFolder home_;
    std::shared_ptr<StorageCancellation> token_ = std::make_shared<StorageCancellation>();
    std::unique_ptr<Probes> probes_ = std::make_unique<SystemProbes>();
    FakeClock clock_;
};

TEST_F(StorageScannerTest, FindsProjectsAndNothingInThem) {
    home_.makeRepository("code/repository");
    home_.write("code/repository/inner/package.json", "{}"); // a project's inside is not searched
    home_.write("code/file checkout/.git", "gitdir: /nowhere");
    for (const char* const marker : {"Package.swift", "Cargo.toml", "pyproject.toml", "go.mod"})
        home_.write(std::string("code/group/") + marker + " project/" + marker, "");
    for (const char* const skipped : {"node_modules", "build", "dist", "target", ".venv", "venv", ".next",
                                      ".turbo", "Library", ".Trash", ".build", "Some.app"})
        home_.write(std::string("code/") + skipped + "/p/package.json", "{}");
    home_.write("code/.hidden/p/package.json", "{}");
    home_.write("code/1/2/3/4/5/6/package.json", "{}"); // the fifth is measured as it is
    fs::create_directories(home_.path("code/one/two/three/four"));
    fs::create_directory_symlink(home_.path("code/repository"), home_.path("code/link"));
    home_.write("code/no project", "");
    const StorageScan result = scan({"code", "code/repository", "missing", "code/no project"});
    EXPECT_THAT(found(result), ElementsAre("code/.hidden/p: Local folder, Local project",
                                           "code/1/2/3/4/5: Local folder, Local folder",
                                           "code/file checkout: Local folder, worktree, worktree",
                                           "code/group/Cargo.toml project: Local folder, Local project",
                                           "code/group/Package.swift project: Local folder, Local project",
                                           "code/group/go.mod project: Local folder, Local project",
                                           "code/group/pyproject.toml project: Local folder, Local project",
                                           "code/repository: Local folder, main"));
    EXPECT_THAT(result.notes, IsEmpty());
    EXPECT_FALSE(result.partial);
    EXPECT_EQ(result.measuredCount(), 8U);
    EXPECT_EQ(result.locations.size(), 2U);
}

TEST_F(StorageScannerTest, AManagersWorktreesAreOneFamily) {
    const std::string base = "conductor/workspaces/";
    home_.write(base + "site/shared.txt", "x");
    home_.write(base + "site/a/.git", "gitdir: /nowhere");
    home_.write(base + "site/b/plain", "x");
    home_.write(base + "other/.git", "gitdir: /nowhere"); // itself the container of its repository
    const StorageScan result = scan({base, base + "site/a"});
    EXPECT_THAT(found(result), ElementsAre(base + "other: Conductor, Shared files, worktree",
                                           base + "site/a: Conductor, worktree, worktree",
                                           base + "site/b: Conductor, Local folder",
                                           base + "site: Conductor, Shared files"));
    EXPECT_EQ(project(result, base + "site").gitSummary, "Shared files outside worktrees");
    EXPECT_EQ(project(result, base + "site").entryCount, 2U) << "the worktrees are projects of their own";
    const auto families = result.families();
    ASSERT_EQ(families.size(), 2U);
    EXPECT_EQ(families[0].members.size(), 3U);
    EXPECT_EQ(families[0].worktreeCount(), 1U);
    EXPECT_EQ(families[0].name(), "a");
}

TEST_F(StorageScannerTest, RelatedWorktreesAreFoundWhereverTheyAre) {
    home_.makeRepository("code/r");
    const std::string odd = "elsewhere/no\xFFtext";
    ASSERT_EQ(
        home_.shell("code/r",
                    "mkdir -p ../../elsewhere ../../conductor/workspaces/r && "
                    "git worktree add -q '../../" +
                        odd +
                        "' -b odd && "
                        "git worktree add -q ../../elsewhere/gone -b gone && rm -r ../../elsewhere/gone && "
                        "git worktree add -q ../../conductor/workspaces/r/w -b w"),
        0);
    home_.write("code/r/.claude/worktrees/agent/.git", "gitdir: /nowhere");
    EXPECT_THAT(found(scan({"code"})), ElementsAre("code/r: Local folder, main"));
    const StorageScan result = scan({"code"}, RelatedWorktrees::include);
    EXPECT_THAT(found(result),
                UnorderedElementsAre("code/r: Local folder, main",
                                     "code/r/.claude/worktrees/agent: Claude Code, worktree, worktree",
                                     odd + ": Related worktree, worktree, worktree",
                                     "conductor/workspaces/r/w: Conductor, w, worktree"));
    EXPECT_EQ(project(result, "conductor/workspaces/r/w").container, home_.path("conductor/workspaces/r"));
}

TEST_F(StorageScannerTest, ALocationBehindALinkIsItsTarget) {
    home_.write("real/p/package.json", "{}");
    fs::create_directory_symlink(home_.path("real"), home_.path("link"));
    const StorageScan result = scan({"link"});
    EXPECT_THAT(result.locations, ElementsAre(StorageLocation{home_.path("real"), "Local folder"}));
    EXPECT_THAT(found(result), ElementsAre("real/p: Local folder, Local project"));
}

TEST_F(StorageScannerTest, WhatCannotBeReadIsSaid) {
    home_.write("code/closed/p/package.json", "{}");
    home_.write("code/open/package.json", "{}");
    home_.write("code/open/corner/file", "x");
    fs::permissions(home_.home(), fs::perms(0755));
    fs::permissions(home_.path("code/closed"), fs::perms::none);
    fs::permissions(home_.path("code/open/corner"), fs::perms::none);
    StorageScan result;
    {
        const WithoutPrivilege plainUser;
        result = scan({"code", "code/closed"});
    }
    fs::permissions(home_.path("code/closed"), fs::perms::owner_all);
    fs::permissions(home_.path("code/open/corner"), fs::perms::owner_all);
    EXPECT_THAT(result.notes, ElementsAre("Couldn’t read closed. Add that folder to grant access."));
    EXPECT_TRUE(result.partial);
    EXPECT_TRUE(project(result, "code/open").partial);
    EXPECT_TRUE(project(result, "code/open").measured);
    EXPECT_GT(project(result, "code/open").bytes(), 0U);
}

TEST_F(StorageScannerTest, MeasuresWhatDuMeasures) {
    const std::string big(1'048'576, 'x');
    home_.makeRepository("code/r");
    home_.write("code/r/node_modules/a/file", big);
    home_.write("code/r/node_modules/a/node_modules/b/file", big);
    home_.write("code/r/node_modules/a/package.json", "{}");
    home_.write("code/r/packages/ui/package.json", "{}");
    home_.write("code/r/packages/ui/node_modules/c/file", big);
    home_.write("code/r/packages/ui/.turbo/log", "x");
    home_.write("code/r/packages/ui/.next/cache/x", "x");
    home_.write("code/r/packages/ui/.next/server/x", "x");
    home_.write("code/r/no manifest/node_modules/x", "x");
    home_.write("code/r/no manifest/.next/cache/x", "x");
    home_.write("code/r/src/cache/x", "x");
    home_.write("code/r/src/file", big);
    fs::create_hard_link(home_.path("code/r/src/file"), home_.path("code/r/src/same file"));
    home_.write("code/r/worktrees/n/.git", "gitdir: /nowhere");
    home_.write("code/r/worktrees/n/file", big);

    const StorageScan alone = scan({"code"});
    const StorageProject& r = project(alone, "code/r");
    FILE* const pipe = popen(("du -s -B1 '" + home_.path("code/r") + "'").c_str(), "r");
    std::uint64_t expected = 0;
    ASSERT_EQ(fscanf(pipe, "%lu", &expected), 1);
    pclose(pipe);
    EXPECT_EQ(r.bytes(), expected);
    EXPECT_FALSE(r.partial);
    EXPECT_EQ(r.gitSummary, "Uncommitted or untracked files · upstream not verified");
    EXPECT_GT(r.buckets.at(StorageBucket::dependencies), 3 * big.size());
    EXPECT_GT(r.buckets.at(StorageBucket::git), 0U);
    EXPECT_GT(r.buckets.at(StorageBucket::caches), 0U);
    EXPECT_THAT(offered(alone, "code/r"), ElementsAre("node_modules", "packages/ui/.next/cache",
                                                      "packages/ui/.turbo", "packages/ui/node_modules"));
    const StorageCandidate& outer = r.candidates.front();
    EXPECT_GT(outer.bytes, 2 * big.size()) << "a nest is one candidate with the sum";
    EXPECT_EQ(outer.identity, DiskIdentity::read(outer.path));
    ASSERT_TRUE(r.lastModified);
    EXPECT_NEAR(r.lastModified->sinceUnixEpoch(), static_cast<double>(time(nullptr)), 60);

    // A project in a project, once it is known, counts for itself alone.
    const StorageScan both = scan({"code", "code/r/worktrees"});
    EXPECT_EQ(project(both, "code/r").bytes() + project(both, "code/r/worktrees/n").bytes(), expected);
    EXPECT_LT(project(both, "code/r").entryCount, r.entryCount);
}

TEST_F(StorageScannerTest, AFileInTwoProjectsIsChargedOnce) {
    const std::string big(1'048'576, 'x');
    home_.write("code/a/package.json", "{}");
    home_.write("code/b/package.json", "{}");
    home_.write("code/a/file", big);
    fs::create_hard_link(home_.path("code/a/file"), home_.path("code/b/file"));
    const StorageScan result = scan({"code"});
    EXPECT_GT(project(result, "code/a").bytes(), big.size());
    EXPECT_LT(project(result, "code/b").bytes(), big.size());
    EXPECT_EQ(project(result, "code/b").entryCount, 3U);
}

TEST_F(StorageScannerTest, OffersNothingThatMayBeSomebodysWork) {
    const struct {
        const char* story;
        const char* change; ///< shell in the repository, which has node_modules/a/file
        bool offered;
    } rows[]{
        {"as it is", "true", true},
        {"Git data in it", "mkdir node_modules/a/.git", false},
        {"a Git file in it", "touch node_modules/.git", false},
        {"Git data behind a link in it", "mkdir -p ../o/.git; ln -s ../../o node_modules/l", true},
        {"something tracked in it", "git add -f node_modules/a/file", false},
        {"not ignored", "rm .gitignore", false},
        {"no manifest beside it", "rm package.json", false},
        {"of another user", "chown 65534 node_modules", false},
        {"no repository", "rm -r .git", false},
        {"itself a link", "mv node_modules /tmp/$$; mv /tmp/$$ ../nm; ln -s ../nm node_modules", false},
        {"in Git's own data", "mv node_modules package.json .git/", false},
    };
    int number = 0;
    for (const auto& row : rows) {
        const std::string name = "code" + std::to_string(++number) + "/r";
        home_.makeRepository(name);
        home_.write(name + "/node_modules/a/file", "x");
        home_.shell(name, row.change);
        const StorageScan result = scan({name});
        EXPECT_EQ(!offered(result, name).empty(), row.offered) << row.story;
        EXPECT_FALSE(result.partial) << row.story;
    }
}

TEST_F(StorageScannerTest, StoppingLeavesTheRestAsItWas) {
    for (const char* const name : {"a", "b", "c"})
        home_.write(std::string("code/") + name + "/package.json", "{}");
    int updates = 0;
    std::vector<std::string> told;
    const StorageScan result = scanner()->scan(
        locations({"code"}), RelatedWorktrees::leave, [&](const std::string& text) { told.push_back(text); },
        [&](const StorageScan& now) {
            EXPECT_TRUE(now.partial) << "what is published on the way is never the whole";
            if (++updates == 2) token_->cancel();
        });
    EXPECT_THAT(told, ElementsAre("1/3 · a · Local project"));
    EXPECT_EQ(updates, 2);
    EXPECT_THAT(result.notes,
                ElementsAre("Scan stopped. Some folders are still unmeasured. Rescan to finish."));
    EXPECT_TRUE(result.partial);
    EXPECT_EQ(result.measuredCount(), 1U);
    EXPECT_TRUE(project(result, "code/a").measured);
    EXPECT_FALSE(project(result, "code/c").measured);
    EXPECT_EQ(project(result, "code/c").gitSummary, "Waiting for scan");
}

TEST_F(StorageScannerTest, LimitsEndItWithTheirOwnNote) {
    home_.write("code/a/package.json", "{}");
    home_.write("code/b/package.json", "{}");
    for (const auto& [limit, seconds] : {std::pair<std::optional<std::int64_t>, std::optional<double>>{0, {}},
                                         {5, {}},
                                         {std::nullopt, -1.0}}) {
        const StorageScan result =
            scanner(limit, seconds)->scan(locations({"code"}), RelatedWorktrees::include);
        EXPECT_THAT(result.notes, ElementsAre("Scan interrupted by its configured limit."));
        EXPECT_TRUE(result.partial);
        EXPECT_EQ(result.reviewBytes(), 0U);
    }
}

TEST_F(StorageScannerTest, AWalkThatFailsKeepsWhatItHas) {
    const std::string p = home_.path("p");
    const FakeDiskEntry start{.path = p, .kind = VN_DISK_DIRECTORY, .allocated = 4096};
    const FakeDiskEntry file{.path = p + "/file", .allocated = 512, .logical = 3};
    const struct {
        const char* story;
        FakeTree tree;
        std::uint64_t entries;
    } rows[]{
        {"fails at its end", {{start, file}, true, {}}, 2},
        {"an entry without a path", {{start, {.path = {}}, file}, false, {}}, 2},
        {"an error entry", {{start, {.path = p + "/x", .kind = VN_DISK_ERROR}, file}, false, {}}, 2},
        {"lengths beyond measure",
         {{start, {.path = p + "/x", .logical = ~0ULL}, {.path = p + "/y", .logical = ~0ULL}}, false, {}},
         3},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.story);
        pretend(row.tree);
        const StorageScan result = scan({"p"});
        EXPECT_TRUE(project(result, "p").partial);
        EXPECT_TRUE(project(result, "p").measured);
        EXPECT_TRUE(result.partial);
        EXPECT_EQ(project(result, "p").entryCount, row.entries);
    }
    pretend({}).trees.clear(); // cannot be opened
    EXPECT_FALSE(project(scan({"p"}), "p").measured);
    EXPECT_EQ(project(scan({"p"}), "p").gitSummary, "Measuring…");
}

TEST_F(StorageScannerTest, PublishesALongMeasurementOnItsWay) {
    FakeTree tree;
    tree.entries.push_back({.path = home_.path("p"), .kind = VN_DISK_DIRECTORY});
    for (int number = 0; number < 5000; ++number)
        tree.entries.push_back({.path = home_.path("p/") + std::to_string(number), .allocated = 512});
    tree.onStep = [this](std::size_t) { clock_.advance(0.001); };
    pretend(std::move(tree));
    std::vector<std::uint64_t> seen;
    scan({"p"}, RelatedWorktrees::leave, [&](const StorageScan& now) { seen.push_back(now.bytes()); });
    // The list, then about every half second of five, then the result.
    EXPECT_GE(seen.size(), 6U);
    EXPECT_LE(seen.size(), 11U);
    EXPECT_TRUE(std::ranges::is_sorted(seen));
    EXPECT_EQ(seen.back(), 5000U * 512U);
}

} // namespace
} // namespace varnet
