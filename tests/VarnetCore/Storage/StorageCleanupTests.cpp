// Folders that turn against the cleanup between scan, validation and move.

#include "VarnetCore/Storage/ActivePaths.h"
#include "VarnetCore/Storage/StorageCleanup.h"
#include "probes/SystemProbes.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/ChildProcess.h"
#include "tests/fakes/GitCheckoutFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace varnet {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using enum StorageCleanupError;

/// Remembers what was to be moved, and moves it beside.
class FakeTrash final : public Trash {
public:
    std::expected<std::optional<std::string>, std::string>
    moveToTrash(const std::string& path, const DiskIdentity& identity) override {
        if (failure) return std::unexpected(*failure);
        EXPECT_EQ(DiskIdentity::read(path), identity);
        asked.push_back(path);
        return "/trash/" + fs::path(path).filename().string();
    }

    std::optional<std::string> failure;
    std::vector<std::string> asked;
};

class StorageCleanupTest : public testing::Test {
protected:
    StorageCleanupTest() {
        home_.makeRepository("r");
        home_.write("r/node_modules/a/file", "x");
        home_.write("r/web/package.json", "{}");
        home_.write("r/web/.next/cache/a", "x");
        home_.write("r/web/.turbo/a", "x");
        home_.write("r/ignored/a", "x");
        home_.write("r/ignored/package.json", "{}");
        home_.write("r/.git/node_modules/a", "x");
        home_.write("r/.git/package.json", "{}");
    }

    StorageCandidate candidate(const std::string& below, const std::string& project = "r") const {
        return {home_.path(project + '/' + below), home_.path(project), StorageBucket::dependencies, 1000,
                DiskIdentity::read(home_.path(project + '/' + below)).value_or(DiskIdentity{})};
    }

    StorageCleanup cleanup(Probes& probes, double timeout = 20) {
        return StorageCleanup(
            {.probes = probes, .trash = trash_, .git = StorageGit(home_.home()), .contentsTimeout = timeout});
    }

    std::optional<StorageCleanupError> refusal(const StorageCandidate& candidate,
                                               const std::vector<std::string>& active = {}) {
        const auto valid = cleanup(probes_).validate(candidate, active);
        return valid ? std::nullopt : std::optional(valid.error());
    }

    static StorageCleanup::ActivePaths nobody() {
        return [] { return std::vector<std::string>{}; };
    }

    const GitCheckoutFolder home_;
    SystemProbes probes_;
    FakeTrash trash_;
};

TEST_F(StorageCleanupTest, ReviewedKindsMayMove) {
    for (const char* const below : {"node_modules", "web/.next/cache", "web/.turbo"})
        EXPECT_EQ(refusal(candidate(below)), std::nullopt) << below;
}

TEST_F(StorageCleanupTest, ChangesSinceTheScanRefuse) {
    const struct {
        const char* story;
        const char* change; ///< shell in the repository
        std::optional<StorageCleanupError> expected;
    } rows[]{
        {"deleted", "rm -r node_modules", changed},
        {"replaced by another of its name", "mv node_modules old; mkdir node_modules", changed},
        {"replaced by a link to itself", "mv node_modules old; ln -s old node_modules", changed},
        {"replaced by a file", "rm -r node_modules; touch node_modules", changed},
        {"its project reached through a link", "cd ..; mv $OLDPWD real; ln -s real $OLDPWD", changed},
        {"given to somebody else", "chown 65534 node_modules", changed},
        {"its manifest is gone", "rm package.json", unsupported},
        {"tracked meanwhile", "git add -f node_modules", tracked},
        {"no longer ignored", "rm .gitignore", tracked},
        {"no repository any more", "rm -r .git", tracked},
        {"Git data in it", "mkdir -p node_modules/a/.git", unsupported},
        {"a Git file in it", "touch node_modules/a/.git", unsupported},
        {"a link called like Git data in it", "ln -s /nowhere node_modules/.git", unsupported},
        {"Git data behind a link", "mkdir -p other/.git; ln -s ../other node_modules/l", std::nullopt},
        {"a loop of links", "ln -s . node_modules/l", std::nullopt},
    };
    int number = 0;
    for (const auto& row : rows) {
        const std::string name = "c" + std::to_string(++number);
        home_.makeRepository(name);
        home_.write(name + "/node_modules/a/file", "x");
        const StorageCandidate before = candidate("node_modules", name);
        home_.shell(name, row.change);
        EXPECT_EQ(refusal(before), row.expected) << row.story;
    }
}

TEST_F(StorageCleanupTest, ACandidateIsNotBelieved) {
    const auto forged = [this](const std::function<void(StorageCandidate&)>& forge) {
        StorageCandidate made = candidate("node_modules");
        forge(made);
        return refusal(made);
    };
    EXPECT_EQ(forged([](auto& c) { c.path = c.projectPath; }), changed);
    EXPECT_EQ(forged([](auto& c) { c.projectPath = c.path; }), changed);
    EXPECT_EQ(forged([](auto& c) { c.projectPath += "x"; }), changed);
    EXPECT_EQ(forged([](auto& c) { c.path = c.projectPath + "/web/../node_modules"; }), changed);
    EXPECT_EQ(forged([](auto& c) { c.path = c.projectPath + "/../elsewhere"; }), changed);
    EXPECT_EQ(forged([](auto& c) { ++c.identity.inode; }), changed);
    EXPECT_EQ(refusal(candidate("ignored")), unsupported);
    EXPECT_EQ(refusal(candidate("web/.next")), unsupported);
    EXPECT_EQ(refusal(candidate(".git/node_modules")), unsupported);
    home_.write("r/ignored/next/cache/a", "x");
    EXPECT_EQ(refusal(candidate("ignored/next/cache")), unsupported);
    if (getuid() != 0) return; // what follows needs a folder of somebody else's
    home_.shell("r", "chown 65534 node_modules");
    EXPECT_EQ(refusal(candidate("node_modules")), permission);
}

TEST_F(StorageCleanupTest, AProcessInTheProjectIsBusy) {
    fs::create_directory_symlink(home_.path("r/web"), home_.path("link"));
    const StorageCandidate made = candidate("node_modules");
    EXPECT_EQ(refusal(made, {home_.path("r")}), busy);
    EXPECT_EQ(refusal(made, {"/", home_.path("r/web")}), busy);
    EXPECT_EQ(refusal(made, {home_.path("link")}), busy) << "stands there by another name";
    EXPECT_EQ(refusal(made, {home_.path("r/gone (deleted)")}), busy);
    EXPECT_EQ(refusal(made, {home_.path("r2"), home_.home(), "/", ""}), std::nullopt);
    const ChildProcess child("/bin/sleep", {"sleep", "60"}, home_.path("r/node_modules/a"));
    const auto moved = cleanup(probes_).moveToTrash(made, [this] { return activePaths(probes_); });
    ASSERT_FALSE(moved);
    EXPECT_EQ(moved.error().refusal, busy);
    EXPECT_THAT(trash_.asked, IsEmpty());
}

TEST_F(StorageCleanupTest, ContentsThatCannotBeCheckedRefuse) {
    const StorageCandidate made = candidate("node_modules");
    const std::string path = made.path;
    const std::int32_t device = made.identity.device;
    const FakeDiskEntry start{.path = path, .kind = VN_DISK_DIRECTORY, .device = device};
    const FakeDiskEntry file{.path = path + "/file", .device = device};
    FakeProbes probes;
    const auto refusalOf = [&](FakeTree tree, double timeout = 20) {
        probes.trees[path] = std::move(tree);
        const auto valid = cleanup(probes, timeout).validate(made, {});
        return valid ? std::nullopt : std::optional(valid.error());
    };
    EXPECT_EQ(refusalOf({{start, file}, false, {}}), std::nullopt);
    EXPECT_EQ(refusalOf({{start, file}, true, {}}), incomplete) << "the walk fails";
    EXPECT_EQ(refusalOf({{start, {.path = path + "/x", .kind = VN_DISK_ERROR}, file}, false, {}}),
              incomplete);
    EXPECT_EQ(refusalOf({{start, {.path = path + "/x", .device = device + 1}}, false, {}}), incomplete)
        << "a mount";
    EXPECT_EQ(refusalOf({{start, file}, false, {}}, -1), incomplete) << "takes too long";
    EXPECT_EQ(refusalOf({{start, file},
                         false,
                         [&](std::size_t at) {
                             if (at == 1) home_.shell("r", "mv node_modules old; mkdir node_modules");
                         }}),
              changed)
        << "swapped while it was looked through";
    probes.trees.clear();
    EXPECT_EQ(refusal(made), changed);
}

TEST_F(StorageCleanupTest, LooksAgainRightBeforeTheMove) {
    const StorageCandidate made = candidate("node_modules");
    const auto failure = [&](const StorageCleanup::ActivePaths& paths) {
        const auto moved = cleanup(probes_).moveToTrash(made, paths);
        return moved ? std::optional<StorageCleanupError>() : moved.error().refusal;
    };
    int calls = 0;
    EXPECT_EQ(failure([&] { return std::vector<std::string>(++calls == 2 ? 1 : 0, home_.path("r")); }), busy);
    EXPECT_EQ(failure([] { return std::unexpected(incomplete); }), incomplete);
    calls = 0;
    EXPECT_EQ(failure([&]() -> std::expected<std::vector<std::string>, StorageCleanupError> {
                  if (++calls == 2) return std::unexpected(incomplete);
                  return {};
              }),
              incomplete);
    calls = 0;
    EXPECT_EQ(failure([&] {
                  if (++calls == 2) home_.shell("r", "mv node_modules old; cp -r old node_modules");
                  return std::vector<std::string>{};
              }),
              changed);
    EXPECT_THAT(trash_.asked, IsEmpty());
}

TEST_F(StorageCleanupTest, ABatchGoesOnAfterAFailure) {
    const std::vector<StorageCandidate> batch{candidate("node_modules"), candidate("ignored"),
                                              candidate("web/.turbo")};
    const StorageCleanup::Outcome outcome = cleanup(probes_).clean(batch, nobody());
    EXPECT_EQ(outcome.moved, 2U);
    EXPECT_EQ(outcome.bytes, 2000U);
    EXPECT_THAT(outcome.failures,
                ElementsAre("ignored: Only reviewed dependency and build-cache folders can be moved."));
    EXPECT_THAT(outcome.trashLocations, ElementsAre("/trash/node_modules", "/trash/.turbo"));
    trash_.failure = "The Trash is full.";
    EXPECT_THAT(cleanup(probes_).clean(batch, nobody()).failures.front(), "node_modules: The Trash is full.");
}

} // namespace
} // namespace varnet
