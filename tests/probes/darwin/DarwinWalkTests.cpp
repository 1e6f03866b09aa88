// The walk for macOS on the C library's own traversal, which has the same form here.

#include "probes/vn_probes.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/fakes/WithoutPrivilege.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace varnet::probes {
namespace {

namespace fs = std::filesystem;
using testing::Pair;
using testing::UnorderedElementsAre;

TEST(DarwinWalk, tellsWhatEachEntryIsAndSkipsOnlyWhatItIsTold) {
    const TemporaryFolder folder;
    const std::string top = folder.path().string();
    folder.write("file", std::string(5000, 'x'));
    folder.write("closed/inside", "x");
    folder.write("kept/inside", "x");
    folder.write("skipped/inside", "x");
    fs::create_symlink("nowhere", folder.path("link"));
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    fs::permissions(folder.path(), fs::perms(0755));
    fs::permissions(folder.path("closed"), fs::perms::none);

    std::optional<WithoutPrivilege> plainUser(std::in_place);
    VNDiskWalk* const walk = vn_disk_open_volume(top.c_str());
    vn_disk_skip(walk); // before the first there is nothing to skip
    std::vector<std::pair<std::string, std::uint32_t>> told;
    bool folders = false;
    VNDiskEntry entry;
    errno = EIO; // somebody else's
    while (vn_disk_next(walk, &entry) == 1) {
        const std::string path = entry.path;
        SCOPED_TRACE(path);
        told.emplace_back(path.substr(top.size()), entry.kind);
        if (path.ends_with("/skipped")) vn_disk_skip(walk);
        if (entry.kind == VN_DISK_ERROR) {
            EXPECT_EQ(entry.error, EACCES);
            EXPECT_EQ(entry.inode + entry.allocated + entry.logical, 0U);
            continue;
        }
        struct stat status{};
        ASSERT_EQ(lstat(path.c_str(), &status), 0);
        const bool isFolder = entry.kind == VN_DISK_DIRECTORY;
        EXPECT_EQ(entry.logical, isFolder ? 0U : static_cast<std::uint64_t>(status.st_size));
        EXPECT_EQ(entry.allocated, static_cast<std::uint64_t>(status.st_blocks) * 512);
        EXPECT_EQ(entry.inode, status.st_ino);
        EXPECT_EQ(entry.links, status.st_nlink);
        EXPECT_EQ(entry.modified, status.st_mtime);
        EXPECT_EQ(entry.device, static_cast<std::int32_t>(status.st_dev));
        EXPECT_EQ(entry.owner, status.st_uid);
        EXPECT_EQ(entry.error, 0);
        const bool atTheTop = path.size() > top.size() && path.find('/', top.size() + 1) == std::string::npos;
        EXPECT_FALSE(atTheTop && !isFolder && folders) << "files come before their folder's subfolders";
        folders = folders || (isFolder && atTheTop);
    }
    vn_disk_skip(walk); // nor after the end
    EXPECT_EQ(vn_disk_next(walk, nullptr), -1);
    vn_disk_close(walk);
    plainUser.reset();
    fs::permissions(folder.path("closed"), fs::perms::owner_all); // so that it can be removed
    EXPECT_THAT(told,
                UnorderedElementsAre(Pair("", VN_DISK_DIRECTORY), Pair("/file", VN_DISK_FILE),
                                     Pair("/link", VN_DISK_SYMLINK), Pair("/pipe", VN_DISK_OTHER),
                                     Pair("/closed", VN_DISK_DIRECTORY), Pair("/closed", VN_DISK_ERROR),
                                     Pair("/kept", VN_DISK_DIRECTORY), Pair("/kept/inside", VN_DISK_FILE),
                                     Pair("/skipped", VN_DISK_DIRECTORY)));
}

TEST(DarwinWalk, refusesNothing) {
    VNDiskEntry entry;
    EXPECT_EQ(vn_disk_next(nullptr, &entry), -1);
    vn_disk_skip(nullptr);
    vn_disk_close(nullptr);
    EXPECT_EQ(vn_disk_open(nullptr), nullptr);
    EXPECT_EQ(vn_disk_open_volume(""), nullptr);
}

} // namespace
} // namespace varnet::probes
