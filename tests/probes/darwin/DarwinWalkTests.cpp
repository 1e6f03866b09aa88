#include "probes/vn_probes.h"
#include "tests/probes/darwin/FakeKernel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <vector>

namespace varnet::probes {
namespace {

using testing::ElementsAre;

struct stat status(std::int64_t size, std::int64_t blocks) {
    struct stat status{};
    status.st_ino = 11;
    status.st_size = size;
    status.st_blocks = blocks;
    status.st_nlink = 2;
    status.st_mtime = 1'700'000'000;
    status.st_dev = 5;
    status.st_uid = 501;
    return status;
}

struct KindRow {
    const char* name;
    FakeEntry entry;
    std::uint32_t kind;
    std::uint64_t logical = 0;
    std::uint64_t allocated = 0;
    std::int32_t error = 0;
};

TEST(DarwinWalk, tellsWhatEachEntryIs) {
    const auto some = status(100, 8);
    const std::vector<KindRow> rows = {
        {"directory has no length", {FTS_D, "/a", 0, some}, VN_DISK_DIRECTORY, 0, 4096},
        {"file", {FTS_F, "/a", 0, some}, VN_DISK_FILE, 100, 4096},
        {"file with nonsense for sizes", {FTS_F, "/a", 0, status(-1, -8)}, VN_DISK_FILE},
        {"link", {FTS_SL, "/a", 0, some}, VN_DISK_SYMLINK, 100, 4096},
        {"link to nothing", {FTS_SLNONE, "/a", 0, some}, VN_DISK_SYMLINK, 100, 4096},
        {"pipe", {FTS_DEFAULT, "/a", 0, some}, VN_DISK_OTHER, 100, 4096},
        {"covered up", {FTS_W, "/a", 0, std::nullopt}, VN_DISK_OTHER},
        {"nobody looked", {FTS_NSOK, "/a", 0, std::nullopt}, VN_DISK_OTHER},
        {"encloses itself", {FTS_DC, "/a", ELOOP, some}, VN_DISK_ERROR, 0, 0, ELOOP},
        {"list refused", {FTS_DNR, "/a", EACCES, some}, VN_DISK_ERROR, 0, 0, EACCES},
        {"broken", {FTS_ERR, "/a", EIO, some}, VN_DISK_ERROR, 0, 0, EIO},
        {"gone meanwhile", {FTS_NS, "/a", ENOENT, some}, VN_DISK_ERROR, 0, 0, ENOENT},
    };
    for (const KindRow& row : rows) {
        SCOPED_TRACE(row.name);
        FakeKernel kernel;
        kernel.entries = {row.entry};
        VNDiskWalk* const walk = vn_disk_open("/a");
        VNDiskEntry entry;
        std::memset(&entry, 0x7f, sizeof entry);
        ASSERT_EQ(vn_disk_next(walk, &entry), 1);
        EXPECT_STREQ(entry.path, "/a");
        EXPECT_EQ(entry.kind, row.kind);
        EXPECT_EQ(entry.logical, row.logical);
        EXPECT_EQ(entry.allocated, row.allocated);
        EXPECT_EQ(entry.error, row.error);
        const bool known = row.entry.status && row.kind != VN_DISK_ERROR;
        EXPECT_EQ(entry.inode, known ? 11U : 0U);
        EXPECT_EQ(entry.links, known ? 2U : 0U);
        EXPECT_EQ(entry.modified, known ? 1'700'000'000 : 0);
        EXPECT_EQ(entry.device, known ? 5 : 0);
        EXPECT_EQ(entry.owner, known ? 501U : 0U);
        vn_disk_close(walk);
        EXPECT_EQ(kernel.walks, 0);
    }
}

TEST(DarwinWalk, tellsFoldersOnceAndSkipsTheLastOne) {
    FakeKernel kernel;
    const auto some = status(1, 1);
    kernel.entries = {{FTS_D, "/a", 0, some},
                      {FTS_D, "/a/b", 0, some},
                      {FTS_DP, "/a/b", 0, some},
                      {FTS_F, "/a/c", 0, some},
                      {FTS_DP, "/a", 0, some}};
    VNDiskWalk* const walk = vn_disk_open_volume("/a");
    EXPECT_EQ(kernel.walkOptions, 84);
    vn_disk_skip(walk); // before the first there is nothing to skip
    std::vector<std::string> told;
    VNDiskEntry entry;
    while (vn_disk_next(walk, &entry) == 1) {
        told.emplace_back(entry.path);
        if (told.back() == "/a/b") vn_disk_skip(walk);
    }
    vn_disk_skip(walk); // nor after the end
    EXPECT_THAT(told, ElementsAre("/a", "/a/b", "/a/c"));
    EXPECT_THAT(kernel.skipped, ElementsAre("/a/b"));
    vn_disk_close(walk);
}

TEST(DarwinWalk, ends) {
    FakeKernel kernel;
    VNDiskWalk* const walk = vn_disk_open("/a");
    EXPECT_EQ(kernel.walkOptions, 20);
    VNDiskEntry entry;
    errno = EIO; // somebody else's
    EXPECT_EQ(vn_disk_next(walk, &entry), 0);
    kernel.walkEnd = EIO;
    EXPECT_EQ(vn_disk_next(walk, &entry), -1);
    EXPECT_EQ(vn_disk_next(walk, nullptr), -1);
    EXPECT_EQ(vn_disk_next(nullptr, &entry), -1);
    vn_disk_skip(nullptr);
    vn_disk_close(walk);
    vn_disk_close(nullptr);
    EXPECT_EQ(vn_disk_open(nullptr), nullptr);
    EXPECT_EQ(vn_disk_open_volume(""), nullptr);

    FTSENT folder{}, file{};
    folder.fts_info = FTS_D;
    file.fts_info = FTS_F;
    const FTSENT* one = &file;
    const FTSENT* other = &folder;
    EXPECT_LT(kernel.compare(&one, &other), 0) << "files come before their folder's subfolders";
    EXPECT_GT(kernel.compare(&other, &one), 0);
    EXPECT_EQ(kernel.compare(&one, &one), 0);
}

} // namespace
} // namespace varnet::probes
