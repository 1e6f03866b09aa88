#include "VarnetCore/Monitoring/GitCheckout.h"
#include "VarnetCore/Monitoring/ProjectResolver.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace varnet {
namespace {

namespace fs = std::filesystem;

class ProjectResolverTests : public testing::Test {
protected:
    std::string labelOf(const std::string& name) {
        const auto project = resolver_.resolve(folder_.path(name), Date{});
        return project ? project->worktree : "no project";
    }

    TemporaryFolder folder_;
    ProjectResolver resolver_{"/home/nobody"};
};

TEST_F(ProjectResolverTests, OddGitFilesNeitherBlockNorLie) {
    fs::create_directories(folder_.path("pipe/.git"));
    ASSERT_EQ(::mkfifo(folder_.path("pipe/.git/HEAD").c_str(), 0600), 0);
    EXPECT_EQ(labelOf("pipe"), "worktree") << "a pipe for HEAD";

    fs::create_directories(folder_.path("pipe git"));
    ASSERT_EQ(::mkfifo(folder_.path("pipe git/.git").c_str(), 0600), 0);
    EXPECT_EQ(labelOf("pipe git"), "worktree") << "a pipe for .git";

    folder_.write("huge/.git/HEAD", "ref: refs/heads/main" + std::string(64 * 1024, '\n'));
    EXPECT_EQ(labelOf("huge"), "worktree") << "more than any HEAD holds";

    folder_.write("nul/.git", std::string("gitdir: /proc/self\0/x", 21));
    EXPECT_EQ(labelOf("nul"), "worktree") << "a path with a NUL";
}

TEST_F(ProjectResolverTests, SymbolicLinksCountAsWhatTheyLeadTo) {
    folder_.write("real/.git/HEAD", "ref: refs/heads/main\n");
    fs::create_directories(folder_.path("linked"));
    fs::create_symlink("../real/.git", folder_.path("linked/.git"));
    EXPECT_EQ(labelOf("linked"), "main");

    fs::create_directories(folder_.path("dangling"));
    fs::create_symlink("nowhere", folder_.path("dangling/.git"));
    folder_.write("dangling/go.mod", "");
    EXPECT_EQ(labelOf("dangling"), "Local project") << "a link to nothing is no checkout";

    fs::create_directories(folder_.path("loop"));
    fs::create_symlink(".git", folder_.path("loop/.git"));
    EXPECT_EQ(labelOf("loop"), "no project") << "a link to itself";
}

TEST_F(ProjectResolverTests, OnlyAbsolutePathsBelongToAnything) {
    for (const std::string path : {"", ".", "relative/path", "/", "//"}) {
        EXPECT_EQ(resolver_.resolve(path, Date{}), nullptr) << path;
    }
    // Nothing of a path this long exists, and the kernel is not asked for more than it takes.
    EXPECT_EQ(resolver_.resolve("/x" + std::string(100'000, 'y'), Date{}), nullptr);
}

TEST_F(ProjectResolverTests, AnswersFromTheFutureAreFresh) {
    folder_.write("a/.git/HEAD", "ref: refs/heads/one");
    const std::string path = folder_.path("a");
    EXPECT_EQ(resolver_.resolve(path, Date{1000})->worktree, "one");
    folder_.write("a/.git/HEAD", "ref: refs/heads/two");
    EXPECT_EQ(resolver_.resolve(path, Date{0})->worktree, "one") << "the clock was set back";
}

TEST(GitCheckout, LabelsAreCutBetweenCharacters) {
    EXPECT_EQ(GitCheckout::label("\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBEx"),
              "\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE\xC5\xBE");
    EXPECT_EQ(GitCheckout::label("\xC2\xA0\xE2\x80\xA8ref: refs/heads/x\xE3\x80\x80"), "x")
        << "white space beyond ASCII";
    EXPECT_EQ(GitCheckout::label("ref: refs/heads/"), "") << "a branch without a name";
}

} // namespace
} // namespace varnet
