// Git on real repositories, hostile ones above all.

#include "VarnetCore/Storage/StorageGit.h"
#include "tests/fakes/GitCheckoutFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

namespace varnet {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;
using namespace std::string_literals;

class StorageGitTest : public testing::Test {
protected:
    StorageGitTest() {
        fs::create_directory(home_.path("tmp"));
        setenv("TMPDIR", home_.path("tmp").c_str(), 1);
    }
    ~StorageGitTest() override {
        EXPECT_TRUE(fs::is_empty(home_.path("tmp"))) << "an output file was left behind";
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child was left behind";
        unsetenv("TMPDIR");
    }

    /// Git as a program that does what its last argument says.
    StorageGit intruder() const { return StorageGit(home_.home(), VARNET_INTRUDER); }

    static double secondsOf(const std::function<void()>& work) {
        const auto start = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    const GitCheckoutFolder home_;
    const StorageGit git_{home_.home()};
};

TEST_F(StorageGitTest, RunsWithTheFixedPrefixAndNothingInherited) {
    const auto result = intruder().run("/some where", {"status", "arguments"});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->code, 0);
    EXPECT_EQ(result->output,
              "--no-optional-locks\n-c\ncore.fsmonitor=false\n-c\ncore.untrackedCache=false\n-C\n"
              "/some where\nstatus\narguments\n"
              "PATH=/usr/bin:/bin\nHOME=" +
                  home_.home() +
                  "\nGIT_TERMINAL_PROMPT=0\nGIT_OPTIONAL_LOCKS=0\nGIT_NO_LAZY_FETCH=1\n"
                  "GIT_CONFIG_NOSYSTEM=1\ninput 0\n");
}

TEST_F(StorageGitTest, AnswersOnlyInTimeAndInBounds) {
    EXPECT_EQ(intruder().run("/", {"write 4000000"})->output.size(), 4'000'000U);
    EXPECT_FALSE(intruder().run("/", {"write 4000001"}));
    EXPECT_FALSE(intruder().run("/", {"write 90000000"}));
    EXPECT_NE(intruder().run("/", {"die"})->code, 0);
    EXPECT_FALSE(StorageGit(home_.home(), std::nullopt).run("/", {"arguments"}));
    EXPECT_FALSE(StorageGit(home_.home(), home_.path("missing")).run("/", {"arguments"}));
    // Deaf to being asked: ended after the time and the grace.
    const double seconds = secondsOf([&] { EXPECT_FALSE(intruder().run("/", {"stay"}, 0.3)); });
    EXPECT_GE(seconds, 0.5);
    EXPECT_LT(seconds, 1.5);
}

TEST_F(StorageGitTest, EndsAtOnceWhenTheScanIsStopped) {
    StorageCancellation token;
    std::chrono::steady_clock::time_point asked;
    std::thread stopper([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        asked = std::chrono::steady_clock::now();
        token.cancel();
    });
    EXPECT_FALSE(intruder().run("/", {"stay"}, 10, &token));
    const auto ended = std::chrono::steady_clock::now();
    stopper.join();
    EXPECT_LT(ended - asked, std::chrono::milliseconds(100));
}

TEST_F(StorageGitTest, NothingItStartsOutlivesIt) {
    const std::string pipe = home_.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const int end = open(pipe.c_str(), O_RDWR); // so that the child's opening never waits
    ASSERT_TRUE(intruder().run("/", {home_.home(), "leave a child"}));
    close(end);
    // Nobody holds it open for reading any more, at the latest when the kernel has cleared the child away.
    for (int look = 0; look < 100; ++look) {
        const int writer = open(pipe.c_str(), O_WRONLY | O_NONBLOCK);
        if (writer < 0) return;
        close(writer);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    FAIL() << "the child is still there";
}

/// The kernel these tests run on has what the confinement needs; where it has not, that is to be seen.
TEST_F(StorageGitTest, TheKernelHoldsItIn) {
    home_.write("file", "content");
    const auto result = intruder().run("/", {home_.home(), "try all"});
    ASSERT_TRUE(result);
    EXPECT_EQ(result->output, "");
    EXPECT_EQ(result->code, 0);
    EXPECT_EQ(fs::file_size(home_.path("file")), 7U);
}

struct Trap {
    const char* story;
    /// Shell in the repository; $TRAP is a program that leaves a canary. Changes to "file" keep its length:
    /// Git takes another length for a change without looking, and no filter would run.
    const char* arm;
    const char* control; ///< what springs it when Git runs unguarded; null: nothing does
};

const Trap traps[]{
    {"a file system monitor", "git config core.fsmonitor $TRAP", "git status"},
    {"a clean filter",
     "echo '* filter=x' > .gitattributes; git config filter.x.clean $TRAP; printf next > file", "git status"},
    {"a required filter process",
     "echo '* filter=x' > .gitattributes; git config filter.x.process $TRAP; git config filter.x.required "
     "true; "
     "printf next > file",
     "git status"},
    {"a hook on refreshing the index",
     "mkdir -p h; cp $TRAP h/post-index-change; git config core.hooksPath $PWD/h; sleep 1.1; touch file",
     "git status"},
    {"a differ and a text converter",
     "echo '* diff=x' > .gitattributes; git config diff.x.textconv $TRAP; git config diff.external $TRAP; "
     "echo a > file",
     "git diff"},
    {"a pager", "git config core.pager $TRAP; git config pager.status $TRAP", nullptr},
    {"an alias of a command",
     "git config alias.status !$TRAP; git config alias.ls-files !$TRAP; git config alias.x !$TRAP", "git x"},
    {"an editor and an asker",
     "git config core.editor $TRAP; git config core.askPass $TRAP; git config sequence.editor $TRAP",
     "git commit --amend"},
    {"a shell over which what is missing is fetched",
     "git config remote.origin.url ssh://h/x; $LOSE; "
     "git config core.sshCommand $TRAP",
     "git status"},
    {"a shell of one word: the loader with a program of the repository",
     "git config remote.origin.url 'ssh://[./evil]/x'; git config ssh.variant simple; $LOSE; cp $TRAP evil; "
     "git config core.sshCommand /lib64/ld-linux-x86-64.so.2",
     "git status"},
    {"a program at the other end",
     "git init -q other; git config remote.origin.url $PWD/other; $LOSE; "
     "git config remote.origin.uploadpack $TRAP",
     "git status"},
    {"an address that is a command",
     "git config protocol.ext.allow always; git config remote.origin.url \"ext::$TRAP\"; $LOSE",
     "git status"},
    {"a helper of a name of its own, found through a link to the loader",
     "mkdir remote-a; mkdir git-remote-a; ln -s $TRAP git-remote-a/b; git config remote.origin.vcs a/b; "
     "git config remote.origin.url x; $LOSE",
     "git status"},
    {"a credential helper",
     "git config credential.helper $TRAP; git config remote.origin.url http://u@127.0.0.1:9/x; $LOSE",
     nullptr},
    {"a submodule's own traps",
     "git init -q sub; cd sub; git config user.name t; git config user.email t@t; git commit -q "
     "--allow-empty -m s; "
     "cd ..; git -c advice.addEmbeddedRepo=false add sub; echo '[submodule \"sub\"]\npath=sub\nurl=./sub' > "
     ".gitmodules; "
     "cd sub; echo '* filter=x' > .gitattributes; git config core.fsmonitor $TRAP; git config filter.x.clean "
     "$TRAP; "
     "echo a > f; git add -N f 2>/dev/null; git commit -qam c; rm -f ../canary canary; echo b > f",
     "git status"},
};

TEST_F(StorageGitTest, RepositoriesRunNothing) {
    // As a repository that came without some of its objects: they are to be fetched when they are missed.
    const std::string lose =
        "{ git config core.repositoryformatversion 1; git config extensions.partialClone origin; "
        "git config remote.origin.promisor true; t=$(git rev-parse HEAD^{tree}); "
        "rm -f .git/objects/$(echo $t | cut -c1-2)/$(echo $t | cut -c3-); }";
    int number = 0;
    for (const Trap& trap : traps) {
        SCOPED_TRACE(trap.story);
        const std::string name = "repository" + std::to_string(++number);
        home_.makeRepository(name);
        const std::string repository = home_.path(name);
        std::string arm = "TRAP=" VARNET_INTRUDER "; " + std::string(trap.arm);
        if (const std::size_t at = arm.find("$LOSE"); at != std::string::npos) arm.replace(at, 5, lose);
        home_.shell(name, arm);
        home_.shell(name, "find . -name canary -delete");
        const auto sprung = [&] { return home_.shell(name, "find . -name canary | grep -q .") == 0; };

        const double seconds = secondsOf([&] {
            git_.summary(repository);
            git_.run(repository, {"worktree", "list", "--porcelain", "-z"});
            git_.ignoredAndUntracked(repository + "/node_modules", repository);
        });
        EXPECT_FALSE(sprung());
        EXPECT_LT(seconds, 2.5) << "something ran, or waited";
        if (trap.control == nullptr) continue;
        home_.shell(name, trap.control);
        EXPECT_TRUE(sprung()) << "the trap is not armed: this row proves nothing";
    }
}

TEST_F(StorageGitTest, ARepositoryThatHangsIsLeft) {
    home_.makeRepository("r");
    ASSERT_EQ(mkfifo(home_.path("r/folder.pipe").c_str(), 0600), 0);
    ASSERT_EQ(home_.shell("r", "git config include.path $PWD/folder.pipe"), 0);
    const double seconds = secondsOf([&] { EXPECT_FALSE(git_.run(home_.path("r"), {"status"}, 0.3)); });
    EXPECT_LT(seconds, 1.0);
}

TEST_F(StorageGitTest, TakesNoLockAndLeavesTheIndexAlone) {
    home_.makeRepository("r");
    const auto index = [&] {
        std::ifstream file(home_.path("r/.git/index"), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    const std::string before = index();
    ASSERT_EQ(home_.shell("r", "sleep 1.1; touch file"), 0); // an index that would like to be refreshed
    home_.write("r/.git/index.lock", "");
    EXPECT_EQ(git_.summary(home_.path("r")), "No uncommitted files found · upstream not verified");
    EXPECT_EQ(index(), before);
    fs::remove(home_.path("r/.git/index.lock"));
    EXPECT_EQ(git_.summary(home_.path("r")), "No uncommitted files found · upstream not verified");
    EXPECT_EQ(index(), before);
}

TEST_F(StorageGitTest, SummarySaysNoMoreThanIsKnown) {
    home_.makeRepository("origin");
    ASSERT_EQ(home_.shell(".", "git clone -q origin clone && cd clone && git config user.name t && "
                               "git config user.email t@t"),
              0);
    const std::string clone = home_.path("clone");
    const struct {
        const char* story;
        const char* change;
        const char* expected;
    } rows[]{
        {"nothing to tell", "true", "No uncommitted files found"},
        {"one is singular", "git commit -q --allow-empty -m a",
         "No uncommitted files found · 1 unpushed commit"},
        {"untracked counts", "git commit -q --allow-empty -m b; touch new",
         "Uncommitted or untracked files · 2 unpushed commits"},
        {"ignored does not", "rm new; touch ignored", "No uncommitted files found · 2 unpushed commits"},
        {"Git looks into submodules by itself",
         "git -c protocol.file.allow=always submodule add -q ../origin sub && git commit -qm sub && echo x > "
         "sub/file",
         "Uncommitted or untracked files · 3 unpushed commits"},
        {"no branch", "git -C sub checkout -q . && git checkout -q --detach",
         "No uncommitted files found · upstream not verified"},
        {"broken", "rm .git/HEAD", "Git status unavailable"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.story);
        home_.shell("clone", row.change);
        EXPECT_EQ(git_.summary(clone), row.expected);
    }
    EXPECT_EQ(git_.summary(home_.path("nowhere")), "Git status unavailable");
}

TEST_F(StorageGitTest, IgnoredAndUntrackedOnlyWhenGitSaysSo) {
    home_.makeRepository("r");
    home_.write("r/node_modules/a", "x");
    home_.write("r/ignored*/a", "x");
    home_.write("r/ignored[x]/a", "x");
    home_.write("r/kept/tracked", "x");
    home_.write("r/plain/a", "x");
    home_.write("r/deep/node_modules/tracked", "x");
    home_.write("outside/node_modules/a", "x");
    ASSERT_EQ(home_.shell("r", "git add -f kept deep && git commit -qm tracked"), 0);
    const std::string repository = home_.path("r");
    const struct {
        const char* story;
        std::string path;
        bool expected;
    } rows[]{
        {"ignored", repository + "/node_modules", true},
        {"a star in its name matches no other", repository + "/ignored*", true},
        {"so do brackets", repository + "/ignored[x]", true},
        {"ignored and tracked", repository + "/kept", false},
        {"tracked somewhere below", repository + "/deep/node_modules", false},
        {"not ignored", repository + "/plain", false},
        {"the repository", repository, false},
        {"beside it", home_.path("outside/node_modules"), false},
        {"a mere common beginning", repository + "x/node_modules", false},
        {"upwards and back", repository + "/../outside/node_modules", false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(git_.ignoredAndUntracked(row.path, repository), row.expected) << row.story;
    EXPECT_FALSE(git_.ignoredAndUntracked(home_.path("outside/node_modules"), home_.path("outside")));
    EXPECT_FALSE(
        StorageGit(home_.home(), std::nullopt).ignoredAndUntracked(repository + "/node_modules", repository));
}

} // namespace
} // namespace varnet
