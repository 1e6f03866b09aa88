// The walk, held against find and du on real trees.

#include "probes/linux/DiskWalker.h"
#include "probes/vn_probes.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/fakes/WithoutPrivilege.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace varnet::probes {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::UnorderedElementsAre;

struct Told {
    std::string path;
    VNDiskEntry entry;
};

std::vector<Told> walkAll(DiskWalker& walker, const std::function<void(const Told&)>& onEntry = {}) {
    std::vector<Told> all;
    VNDiskEntry entry;
    while (walker.next(entry) == 1) {
        all.push_back({entry.path, entry});
        if (onEntry) onEntry(all.back());
    }
    return all;
}

std::vector<Told> walkAll(const std::string& path) {
    DiskWalker walker(path.c_str(), false);
    return walkAll(walker);
}

/// Path and kind of everything told.
std::vector<std::pair<std::string, std::uint32_t>> shapes(const std::vector<Told>& all) {
    std::vector<std::pair<std::string, std::uint32_t>> shapes;
    for (const Told& told : all)
        shapes.emplace_back(told.path, told.entry.kind);
    return shapes;
}

std::string outputOf(const std::string& command) {
    FILE* const pipe = popen(command.c_str(), "r");
    std::string output;
    std::array<char, 65536> buffer{};
    while (const std::size_t got = fread(buffer.data(), 1, buffer.size(), pipe))
        output.append(buffer.data(), got);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

char letterOf(std::uint32_t kind) {
    constexpr std::array letters{'?', 'd', 'f', 'l', 'p', '!'};
    return letters.at(kind);
}

/// One line an entry, as find is asked to print it.
std::multiset<std::string> lines(const std::vector<Told>& all) {
    std::multiset<std::string> lines;
    for (const auto& [path, entry] : all) {
        const std::uint64_t size = entry.kind == VN_DISK_DIRECTORY ? 0 : entry.logical;
        lines.insert(std::string(1, letterOf(entry.kind)) + ' ' + std::to_string(entry.inode) + ' ' +
                     std::to_string(entry.allocated / 512) + ' ' + std::to_string(size) + ' ' +
                     std::to_string(entry.links) + ' ' + std::to_string(entry.owner) + ' ' +
                     std::to_string(entry.modified) + ' ' + path);
    }
    return lines;
}

std::multiset<std::string> linesOfFind(const std::string& path) {
    const std::string format = "%y %i %b %s %n %U %Ts %p\\0";
    const std::string output = outputOf(
        "find '" + path + "' -type d -printf '%y %i %b 0 %n %U %Ts %p\\0' -o " + "-printf '" + format + "'");
    std::multiset<std::string> lines;
    for (std::size_t at = 0; at < output.size();) {
        const std::size_t end = output.find('\0', at);
        lines.insert(output.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

std::uint64_t bytesOnce(const std::vector<Told>& all) {
    std::set<std::pair<std::int32_t, std::uint64_t>> seen;
    std::uint64_t bytes = 0;
    for (const Told& told : all) {
        if (seen.emplace(told.entry.device, told.entry.inode).second) bytes += told.entry.allocated;
    }
    return bytes;
}

TEST(DiskWalk, TellsWhatFindAndDuTell) {
    const TemporaryFolder folder;
    const std::string top = folder.path().string();
    folder.write("a/file", std::string(100'000, 'x'));
    folder.write("a/deep/er/file", "1");
    folder.write("empty file", "");
    fs::create_directories(folder.path() / "empty/folder");
    fs::create_hard_link(folder.path() / "a/file", folder.path() / "a/deep/same file");
    fs::create_symlink("..", folder.path() / "a/deep/up");
    fs::create_symlink("self", folder.path() / "self");
    fs::create_symlink("/", folder.path() / "everything");
    ASSERT_EQ(mkfifo(folder.path("pipe").c_str(), 0600), 0);
    // Names are bytes: Latin-1, half a character, two forms of one letter, a newline, quotes.
    for (const char* const name :
         {"Gr\xFC\xDF", "\xE2\x82", "\xC3\xA9", "e\xCC\x81", "new\nline", "quo\"te", "-n", "…"})
        folder.write(std::string("names/") + name + "/" + name, "x");
    // More than one reading of a list.
    for (int number = 0; number < 3000; ++number)
        folder.write("many/a rather long name so that lists come in pieces " + std::to_string(number), "");
    for (int number = 0; number < 500; ++number)
        fs::create_directory(folder.path() / "many" / std::to_string(number));

    const std::vector<Told> all = walkAll(top);
    EXPECT_EQ(lines(all), linesOfFind(top));
    EXPECT_EQ(bytesOnce(all), std::stoull(outputOf("du -s -B1 '" + top + "'")));

    // A directory comes before what is in it, its files before its subdirectories.
    std::set<std::string> begun;
    std::set<std::string> inSubfolders;
    for (const auto& [path, entry] : all) {
        const std::string parent = fs::path(path).parent_path();
        EXPECT_TRUE(path == top || begun.contains(parent)) << path;
        if (entry.kind == VN_DISK_DIRECTORY) {
            begun.insert(path);
            inSubfolders.insert(parent);
        } else {
            EXPECT_FALSE(inSubfolders.contains(parent)) << path;
        }
    }
}

TEST(DiskWalk, TheStartMayBeAnything) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "12345");
    fs::create_symlink(folder.path(), folder.path() / "link");
    EXPECT_THAT(shapes(walkAll(file)), ElementsAre(Pair(file, VN_DISK_FILE)));
    EXPECT_THAT(shapes(walkAll(folder.path("link"))),
                ElementsAre(Pair(folder.path("link"), VN_DISK_SYMLINK)));
    const auto missing = walkAll(folder.path("missing"));
    ASSERT_THAT(shapes(missing), ElementsAre(Pair(folder.path("missing"), VN_DISK_ERROR)));
    EXPECT_EQ(missing[0].entry.error, ENOENT);
    EXPECT_EQ(vn_disk_open(nullptr), nullptr);
    EXPECT_EQ(vn_disk_open(""), nullptr);
    EXPECT_EQ(vn_disk_next(nullptr, nullptr), -1);
    vn_disk_skip(nullptr);
    vn_disk_close(nullptr);
}

TEST(DiskWalk, UnreadableFoldersAreToldAndWalkedPast) {
    const TemporaryFolder folder;
    const std::string top = folder.path().string();
    folder.write("closed/inside", "x");
    folder.write("listed only/inside", "x");
    folder.write("open/inside", "x");
    fs::permissions(folder.path(), fs::perms(0755));
    fs::permissions(folder.path("closed"), fs::perms::none);
    fs::permissions(folder.path("listed only"), fs::perms(0444));
    {
        const WithoutPrivilege plainUser;
        EXPECT_THAT(shapes(walkAll(top)),
                    UnorderedElementsAre(
                        Pair(top, VN_DISK_DIRECTORY), Pair(top + "/closed", VN_DISK_DIRECTORY),
                        Pair(top + "/closed", VN_DISK_ERROR), Pair(top + "/listed only", VN_DISK_DIRECTORY),
                        Pair(top + "/listed only/inside", VN_DISK_ERROR),
                        Pair(top + "/open", VN_DISK_DIRECTORY), Pair(top + "/open/inside", VN_DISK_FILE)));
    }
    fs::permissions(folder.path("closed"), fs::perms::owner_all);
    fs::permissions(folder.path("listed only"), fs::perms::owner_all);
}

TEST(DiskWalk, SkipLeavesOutOneFolder) {
    const TemporaryFolder folder;
    folder.write("left out/inside", "x");
    folder.write("kept/inside", "x");
    DiskWalker walker(folder.path().c_str(), false);
    walker.skip(); // before the first step: nothing
    const auto all = walkAll(walker, [&](const Told& told) {
        if (told.path.ends_with("left out")) walker.skip();
    });
    EXPECT_THAT(shapes(all), Contains(Pair(folder.path("left out"), VN_DISK_DIRECTORY)));
    EXPECT_THAT(shapes(all), Not(Contains(Pair(folder.path("left out/inside"), VN_DISK_FILE))));
    EXPECT_THAT(shapes(all), Contains(Pair(folder.path("kept/inside"), VN_DISK_FILE)));
}

// The shared memory folder is a file system of its own on any Linux.
TEST(DiskWalk, OneVolumeTellsOthersWithoutEntering) {
    const std::string inside = "/dev/shm/varnet-test-" + std::to_string(getpid());
    fclose(fopen(inside.c_str(), "w"));
    for (const bool oneVolume : {true, false}) {
        DiskWalker walker("/dev", oneVolume);
        const auto all = shapes(walkAll(walker));
        EXPECT_THAT(all, Contains(Pair("/dev/shm", VN_DISK_DIRECTORY)));
        EXPECT_EQ(std::ranges::count(all, std::pair(inside, std::uint32_t{VN_DISK_FILE})), oneVolume ? 0 : 1);
    }
    unlink(inside.c_str());
}

/// Far deeper than a path may be long or a process may hold descriptors.
TEST(DiskWalk, DepthHasNoLimit) {
    constexpr int depth = 10'000;
    const TemporaryFolder folder;
    const std::string top = folder.path().string();
    int current = open(top.c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < depth; ++level) {
        ASSERT_EQ(mkdirat(current, "d", 0700), 0);
        // A sibling at some levels: the walk has to come back for it.
        if (level % 100 == 0) {
            ASSERT_EQ(mkdirat(current, "sibling", 0700), 0);
        }
        const int next = openat(current, "d", O_RDONLY | O_DIRECTORY);
        close(current);
        current = next;
    }
    close(openat(current, "bottom", O_CREAT | O_WRONLY, 0600));
    close(current);

    DiskWalker walker(top.c_str(), false, 5);
    std::size_t entries = 0;
    std::size_t errors = 0;
    std::size_t longest = 0;
    std::size_t descriptors = 0;
    VNDiskEntry entry;
    const auto openNow = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), {}); };
    const auto before = openNow();
    while (walker.next(entry) == 1) {
        ++entries;
        if (entry.kind == VN_DISK_ERROR) ++errors;
        longest = std::max(longest, std::string(entry.path).size());
        if (entries % 1000 == 0)
            descriptors = std::max(descriptors, static_cast<std::size_t>(openNow() - before));
    }
    EXPECT_EQ(entries, 1U + depth + depth / 100 + 1);
    EXPECT_EQ(errors, 0U);
    EXPECT_EQ(longest, top.size() + 2 * depth + std::string("/bottom").size());
    EXPECT_LE(descriptors, 5U);
    outputOf("rm -rf '" + top + "/d'"); // too deep for the library's own
}

struct Change {
    const char* story;
    const char* when; ///< the entry, below the start, that is told right before the change
    std::vector<std::pair<const char*, const char*>> moves; ///< from and to, below the test's folder
    const char* linked; ///< a place that is a link to "outside" then; null: none
    bool backToA;       ///< "a/z/file" must still come, as "z/file" always must
    const char* error;  ///< must come as an error; null: nothing
};

// With room for two descriptors the way back always leads over "..".
TEST(DiskWalk, FoldersThatChangeWhileWalked) {
    const std::pair movedC{"start/a/b/c", "elsewhere/c"}, movedA{"start/a", "elsewhere/a"};
    const char* const deep = "a/b/c/d/file";
    const std::vector<Change> changes{
        {"a deeper folder moved elsewhere", deep, {movedC}, nullptr, true, nullptr},
        {"a folder above moved elsewhere", deep, {movedA}, nullptr, true, nullptr},
        {"moved, and what it was in is gone", deep, {movedC, movedA}, nullptr, false, "a/z"},
        {"swapped for a link after it was told", "a/b/c", {movedC}, "start/a/b/c", true, "a/b/c"},
        {"swapped for another folder after it was told",
         "a/b/c",
         {movedC, {"outside", "start/a/b/c"}},
         nullptr,
         true,
         "a/b/c"},
        {"the way back swapped for a link", deep, {movedC, movedA}, "start/a", false, "a/z"},
    };
    for (const Change& change : changes) {
        SCOPED_TRACE(change.story);
        const TemporaryFolder folder;
        const std::string start = folder.path("start");
        for (const char* const file : {"start/a/b/c/d/file", "start/a/z/file", "start/z/file",
                                       "outside/z/secret", "outside/secret", "elsewhere/file"})
            folder.write(file, "x");
        bool changed = false;
        std::vector<Told> all;
        DiskWalker walker(start.c_str(), false, 2);
        VNDiskEntry entry;
        // Whether "b" comes before "z" is the file system's choice: both orders must hold.
        while (walker.next(entry) == 1) {
            all.push_back({entry.path, entry});
            if (!changed && all.back().path == start + "/" + change.when) {
                changed = true;
                for (const auto& [from, to] : change.moves)
                    fs::rename(folder.path(from), folder.path(to));
                if (change.linked != nullptr)
                    fs::create_directory_symlink(folder.path("outside"), folder.path(change.linked));
            }
        }
        ASSERT_TRUE(changed);
        std::set<std::pair<std::string, std::uint32_t>> once;
        for (const auto& shape : shapes(all)) {
            EXPECT_TRUE(once.insert(shape).second) << shape.first << " told twice";
            EXPECT_EQ(shape.first.find("secret"), std::string::npos) << shape.first;
        }
        EXPECT_TRUE(once.contains({start + "/z/file", VN_DISK_FILE}));
        EXPECT_TRUE(!change.backToA || once.contains({start + "/a/z/file", VN_DISK_FILE}));
        if (change.error == nullptr) continue;
        const std::string path = start + "/" + change.error;
        EXPECT_TRUE(once.contains({path + "/file", VN_DISK_FILE}) || once.contains({path, VN_DISK_ERROR}));
    }
}

} // namespace
} // namespace varnet::probes
