// The trash on real file systems: some tests mount small ones, which only they see.

#include "VarnetApp/Platform/linux/FreedesktopTrash.h"
#include "VarnetApp/Platform/linux/TrashFolder.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/fakes/WithoutPrivilege.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

namespace varnet::platform {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::MatchesRegex;

std::string contents(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::size_t entries(const std::string& folder) {
    return fs::exists(folder) ? static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}))
                              : 0;
}

class TrashTest : public testing::Test {
protected:
    /// A folder with a file in it. @return what is asked for when it is to go
    DiskIdentity make(const std::string& below) const {
        folder_.write(below + "/inside/file", "content");
        return DiskIdentity::read(folder_.path(below)).value();
    }

    std::expected<std::optional<std::string>, std::string> throwAway(const std::string& below) {
        return trash_.moveToTrash(folder_.path(below), DiskIdentity::read(folder_.path(below)).value());
    }

    /// A file system of its own at a folder, gone with the test's process.
    void mountAt(const std::string& below, const char* options) const {
        static const bool apart =
            unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
        ASSERT_TRUE(apart) << "these tests mount file systems: run them as root";
        fs::create_directories(folder_.path(below));
        ASSERT_EQ(mount("none", folder_.path(below).c_str(), "tmpfs", 0, options), 0);
        mounted_ = folder_.path(below);
    }

    ~TrashTest() override {
        if (!mounted_.empty()) umount2(mounted_.c_str(), MNT_DETACH);
    }

    const TemporaryFolder folder_;
    mutable std::string mounted_;
    FreedesktopTrash trash_{folder_.path("data/Trash")};
};

TEST_F(TrashTest, MovesAsAWholeAndRemembersFromWhere) {
    const DiskIdentity identity = make("a b/ü%/node_modules");
    const auto moved = throwAway("a b/ü%/node_modules");
    ASSERT_TRUE(moved) << moved.error();
    EXPECT_EQ(*moved, folder_.path("data/Trash/files/node_modules"));
    EXPECT_EQ(DiskIdentity::read(**moved), identity) << "renamed, not copied";
    EXPECT_EQ(contents(**moved + "/inside/file"), "content");
    EXPECT_FALSE(fs::exists(folder_.path("a b/ü%/node_modules")));
    const std::string encoded = folder_.path().string() + "/a%20b/%C3%BC%25/node_modules";
    EXPECT_THAT(contents(folder_.path("data/Trash/info/node_modules.trashinfo")),
                MatchesRegex("\\[Trash Info\\]\nPath=" + encoded +
                             "\nDeletionDate=[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\n"));
    EXPECT_EQ(fs::status(folder_.path("data/Trash")).permissions(), fs::perms::owner_all);
}

TEST_F(TrashTest, NamesThatAreTakenStayUntouched) {
    for (const char* const below : {"1/n", "2/n", "3/n"})
        make(below);
    folder_.write("data/Trash/info/n.trashinfo", "theirs"); // a note without a folder
    folder_.write("data/Trash/files/n.2/inside", "theirs"); // a folder without a note
    EXPECT_EQ(throwAway("1/n").value(), folder_.path("data/Trash/files/n.3"));
    EXPECT_EQ(throwAway("2/n").value(), folder_.path("data/Trash/files/n.4"));
    EXPECT_EQ(contents(folder_.path("data/Trash/info/n.trashinfo")), "theirs");
    EXPECT_EQ(contents(folder_.path("data/Trash/files/n.2/inside")), "theirs");
    EXPECT_FALSE(fs::exists(folder_.path("data/Trash/info/n.2.trashinfo")));
}

TEST_F(TrashTest, ATrashBehindALinkWorks) {
    fs::create_directories(folder_.path("elsewhere"));
    fs::create_directories(folder_.path("data"));
    fs::create_directory_symlink(folder_.path("elsewhere"), folder_.path("data/Trash"));
    make("p/n");
    ASSERT_TRUE(throwAway("p/n"));
    EXPECT_EQ(contents(folder_.path("elsewhere/files/n/inside/file")), "content");
}

TEST_F(TrashTest, OnlyTheFolderThatWasCheckedMoves) {
    const DiskIdentity checked = make("p/n");
    make("outside/n");
    const struct {
        const char* story;
        std::function<void()> swap;
    } rows[]{
        {"another of its name",
         [&] {
             fs::rename(folder_.path("p/n"), folder_.path("p/old"));
             make("p/n");
         }},
        {"a link in its place",
         [&] {
             fs::remove_all(folder_.path("p/n"));
             fs::create_directory_symlink(folder_.path("p/old"), folder_.path("p/n"));
         }},
        {"a file in its place",
         [&] {
             fs::remove(folder_.path("p/n"));
             folder_.write("p/n", "x");
         }},
        {"nothing in its place", [&] { fs::remove(folder_.path("p/n")); }},
        {"a link above it",
         [&] {
             fs::rename(folder_.path("p/old"), folder_.path("p/n"));
             fs::rename(folder_.path("p"), folder_.path("q"));
             fs::create_directory_symlink(folder_.path("q"), folder_.path("p"));
         }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.story);
        row.swap();
        const auto moved = trash_.moveToTrash(folder_.path("p/n"), checked);
        ASSERT_FALSE(moved);
        EXPECT_FALSE(moved.error().empty());
        EXPECT_EQ(entries(folder_.path("data/Trash/files")), 0U);
        EXPECT_EQ(entries(folder_.path("data/Trash/info")), 0U);
    }
    EXPECT_EQ(contents(folder_.path("q/n/inside/file")), "content");
    EXPECT_EQ(contents(folder_.path("outside/n/inside/file")), "content");
}

TEST_F(TrashTest, ASwapAfterTheLastLookIsTakenBack) {
    const DiskIdentity checked = make("p/n");
    const auto held = TrashedFolder::hold(folder_.path("p/n"), checked);
    ASSERT_TRUE(held);
    fs::rename(folder_.path("p/n"), folder_.path("p/old"));
    const DiskIdentity other = make("p/n");
    const auto home = TrashFolder::ofHome(folder_.path("data/Trash"));
    const auto taken = home.value().take(*held);
    ASSERT_FALSE(taken);
    EXPECT_THAT(taken.error().text, HasSubstr("Nothing was moved"));
    EXPECT_EQ(DiskIdentity::read(folder_.path("p/n")), other) << "back where it was";
    EXPECT_EQ(entries(folder_.path("data/Trash/info")), 0U);

    // A link planted above it after it was held leads nowhere: it is held by its folder.
    const auto again = TrashedFolder::hold(folder_.path("p/n"), other);
    fs::rename(folder_.path("p"), folder_.path("q"));
    make("outside/n");
    fs::create_directory_symlink(folder_.path("outside"), folder_.path("p"));
    EXPECT_TRUE(home.value().take(*again));
    EXPECT_TRUE(fs::exists(folder_.path("outside/n")));
    EXPECT_FALSE(fs::exists(folder_.path("q/n")));
}

TEST_F(TrashTest, AnotherVolumeHasATrashOfItsOwn) {
    mountAt("volume", "size=1m");
    const std::string own = ".Trash-" + std::to_string(getuid());
    make("volume/a b/n");
    EXPECT_EQ(throwAway("volume/a b/n").value(), folder_.path("volume/" + own + "/files/n"));
    EXPECT_THAT(contents(folder_.path("volume/" + own + "/info/n.trashinfo")), HasSubstr("\nPath=a%20b/n\n"));
    EXPECT_EQ(entries(folder_.path("data/Trash/files")), 0U);

    // A folder that everybody may write to counts only when nobody can take what is in it.
    const std::string shared = folder_.path("volume/.Trash");
    fs::create_directory_symlink(folder_.path(), shared);
    make("volume/n");
    EXPECT_THAT(throwAway("volume/n").value().value(), HasSubstr(own));
    fs::remove(shared);
    fs::create_directory(shared);
    chmod(shared.c_str(), 0777);
    make("volume/n");
    EXPECT_THAT(throwAway("volume/n").value().value(), HasSubstr(own));
    chmod(shared.c_str(), 01777);
    make("volume/n");
    EXPECT_EQ(throwAway("volume/n").value(), shared + '/' + std::to_string(getuid()) + "/files/n");
}

TEST_F(TrashTest, SomebodyElsesTrashIsNotUsed) {
    mountAt("volume", "size=1m");
    const std::string own = folder_.path("volume/.Trash-" + std::to_string(getuid()));
    fs::create_directory(own);
    ASSERT_EQ(chown(own.c_str(), WithoutPrivilege::user, WithoutPrivilege::user), 0);
    make("volume/n");
    EXPECT_FALSE(throwAway("volume/n"));
    fs::remove(own);
    fs::create_directory(folder_.path("volume/theirs"));
    fs::create_directory_symlink("theirs", own);
    ASSERT_EQ(lchown(own.c_str(), WithoutPrivilege::user, WithoutPrivilege::user), 0);
    EXPECT_FALSE(throwAway("volume/n"));
    EXPECT_EQ(entries(folder_.path("volume/theirs")), 0U);
    EXPECT_EQ(contents(folder_.path("volume/n/inside/file")), "content");
}

TEST_F(TrashTest, AFullOrReadOnlyTrashSaysSo) {
    mountAt("volume",
            "size=1m,nr_inodes=9"); // its root, two folders to go, a file each, the trash: then it is full
    make("volume/n");
    make("volume/m");
    const auto full = throwAway("volume/n");
    ASSERT_FALSE(full);
    EXPECT_EQ(full.error(), "The Trash can’t be used: No space left on device.");
    ASSERT_EQ(mount("none", mounted_.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr), 0);
    const auto readOnly = throwAway("volume/n");
    ASSERT_FALSE(readOnly);
    EXPECT_EQ(readOnly.error(), "The Trash can’t be used: Read-only file system.");
    EXPECT_EQ(contents(folder_.path("volume/n/inside/file")), "content");
}

/// Two mounts of one device look alike, but nothing can be renamed between them.
TEST_F(TrashTest, ABoundFolderGoesToTheTopOfItsOwnMount) {
    mountAt("volume", "size=1m");
    fs::create_directories(folder_.path("volume/bound"));
    make("source/n");
    ASSERT_EQ(mount(folder_.path("source").c_str(), folder_.path("volume/bound").c_str(), nullptr, MS_BIND,
                    nullptr),
              0);
    const std::string top = folder_.path("volume/bound");
    const auto moved = throwAway("volume/bound/n");
    ASSERT_TRUE(moved) << moved.error();
    EXPECT_EQ(*moved, top + "/.Trash-" + std::to_string(getuid()) + "/files/n");
    EXPECT_FALSE(fs::exists(top + "/n"));
    umount2(top.c_str(), MNT_DETACH);
}

} // namespace
} // namespace varnet::platform
