#include "VarnetCore/Disk/DiskUsageScanner.h"
#include "probes/SystemProbes.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <tuple>

namespace varnet {
namespace {

using testing::ElementsAre;

/// Bytes that du counts for a folder.
std::uint64_t du(const std::string& path) {
    FILE* const pipe = popen(("du -s --block-size=1 '" + path + "'").c_str(), "r");
    unsigned long long bytes = 0;
    if (pipe == nullptr || std::fscanf(pipe, "%llu", &bytes) != 1) ADD_FAILURE() << "no du";
    pclose(pipe);
    return bytes;
}

std::vector<std::string> names(const DiskUsageScan& scan) {
    std::vector<std::string> result;
    for (const DiskUsageEntry& entry : scan.entries)
        result.push_back(entry.name);
    return result;
}

class DiskUsageScannerTest : public testing::Test {
protected:
    DiskUsageScanner scanner(std::optional<std::int64_t> limit = {}, double interval = 1e9) {
        return scannerOn(real, limit, interval);
    }
    DiskUsageScanner scannerOn(Probes& probes, std::optional<std::int64_t> limit = {},
                               double interval = 1e9) {
        return DiskUsageScanner({.token = token,
                                 .probes = probes,
                                 .clock = clock,
                                 .volumes = {},
                                 .entryLimit = limit,
                                 .progressInterval = interval});
    }
    DiskUsageScan ask(const std::optional<std::string>& path) const {
        const auto answer = index->folder(path);
        if (answer && *answer) return **answer;
        ADD_FAILURE() << "nothing is known of " << path.value_or("the top");
        return {};
    }

    /// A pretended tree whose root is the real folder "tree".
    FakeTree tree(std::vector<FakeDiskEntry> entries) {
        const std::string root = folder.path("tree");
        std::filesystem::create_directory(root);
        struct stat status{};
        stat(root.c_str(), &status);
        entries.insert(entries.begin(), {.path = "", .kind = VN_DISK_DIRECTORY});
        for (FakeDiskEntry& entry : entries) {
            entry.path = root + *entry.path;
            if (entry.device == 1) entry.device = static_cast<std::int32_t>(status.st_dev);
        }
        return {.entries = std::move(entries), .failsAtEnd = false, .onStep = {}};
    }

    TemporaryFolder folder;
    TemporaryFolder temporary;
    FakeClock clock;
    SystemProbes real;
    FakeProbes fake;
    std::shared_ptr<StorageCancellation> token = std::make_shared<StorageCancellation>();
    std::shared_ptr<DiskUsageIndex> index = DiskUsageIndex::make(temporary.path()).value();
};

TEST_F(DiskUsageScannerTest, everyFolderAgreesWithDu) {
    folder.write("a/deep/er/one", std::string(70'000, 'x'));
    folder.write("a/two", "y");
    folder.write("b/not \xFF utf-8/z", std::string(5000, 'z'));
    folder.write("b/Cafe\xCC\x81/composed later", "c");
    std::filesystem::create_directories(folder.path("empty"));
    std::filesystem::create_symlink(folder.path("a"), folder.path("b/loop"));
    std::filesystem::create_hard_link(folder.path("a/deep/er/one"), folder.path("a/deep/er/again"));
    const DiskUsageScan scan = scanner().scan(folder.path().string(), index.get());
    EXPECT_TRUE(scan.complete);
    EXPECT_FALSE(scan.stopped);
    EXPECT_EQ(scan.unreadable, 0);
    struct stat root{};
    stat(folder.path().c_str(), &root);
    EXPECT_EQ(scan.bytes(), du(folder.path().string()) - static_cast<std::uint64_t>(root.st_blocks) * 512);
    for (const char* inner : {"a", "a/deep", "b", "b/not \xFF utf-8"}) {
        const std::string path = folder.path(inner);
        struct stat status{};
        stat(path.c_str(), &status);
        const DiskUsageScan found = ask(path);
        EXPECT_EQ(found.bytes() + static_cast<std::uint64_t>(status.st_blocks) * 512, du(path)) << inner;
        EXPECT_TRUE(found.complete) << inner;
    }
    EXPECT_THAT(names(ask(folder.path("b"))), testing::Contains("Caf\xC3\xA9"));
    EXPECT_EQ(ask(folder.path("b/Cafe\xCC\x81")).entries.size(), 1u);
}

TEST_F(DiskUsageScannerTest, linkedFileCountsWhereItIsMetFirst) {
    folder.write("a/file", std::string(50'000, 'x'));
    std::filesystem::create_directory(folder.path("b"));
    std::filesystem::create_hard_link(folder.path("a/file"), folder.path("b/file"));
    const DiskUsageScan scan = scanner().scan(folder.path().string(), nullptr);
    ASSERT_EQ(scan.entries.size(), 2u);
    EXPECT_GE(scan.entries[0].bytes - scan.entries[1].bytes, 49'152u);
}

TEST_F(DiskUsageScannerTest, whatCannotBeReadIsSaidAndNothingMore) {
    fake.trees[folder.path("tree")] =
        tree({{.path = "/a", .kind = VN_DISK_DIRECTORY, .allocated = 4096},
              {.path = "/a/closed", .kind = VN_DISK_DIRECTORY, .allocated = 4096},
              {.path = "/a/closed", .kind = VN_DISK_ERROR},
              {.path = {"/b"}, .allocated = 512},
              {.path = "/mount", .kind = VN_DISK_DIRECTORY, .device = 99}});
    fake.trees.begin()->second.failsAtEnd = true;
    const DiskUsageScan scan = scannerOn(fake).scan(folder.path("tree"), index.get());
    EXPECT_TRUE(scan.complete);
    EXPECT_EQ(scan.entriesRead, 6u);
    EXPECT_EQ(scan.unreadable, 2); // the folder, and the walk's own end
    EXPECT_EQ(scan.skippedVolumes, 1);
    ASSERT_EQ(scan.entries.size(), 2u);
    EXPECT_EQ(scan.entries[0], (DiskUsageEntry{folder.path("tree/a"), "a", true, 8192, true}));
    EXPECT_TRUE(scan.entries[1].partial); // it was being read when the walk failed
    EXPECT_EQ(ask(folder.path("tree/a")).unreadable, 1);
    EXPECT_TRUE(ask(folder.path("tree/a")).entries[0].partial);
}

TEST_F(DiskUsageScannerTest, rootThatIsNoFolderIsOnePartialRow) {
    const std::string file = folder.write("file", "x");
    for (const std::string& root : {file, folder.path("missing")}) {
        const DiskUsageScan scan = scanner().scan(root, index.get());
        EXPECT_EQ(scan.unreadable, 1) << root;
        EXPECT_TRUE(scan.complete) << root;
        ASSERT_EQ(scan.entries.size(), 1u) << root;
        EXPECT_EQ(scan.entries[0], (DiskUsageEntry{root, root.substr(root.rfind('/') + 1), true, 0, true}));
    }
}

TEST_F(DiskUsageScannerTest, stoppedScansAreTrue) {
    for (int file = 0; file < 40; ++file)
        folder.write("a/" + std::to_string(file), "x");
    using Case = std::tuple<const char*, std::optional<std::int64_t>, bool, std::uint64_t>;
    for (const auto& [name, limit, cancelled, read] :
         {Case{"limit of as many as there are", 42, false, 42}, Case{"none", 0, false, 0},
          Case{"half", 20, false, 20}, Case{"cancelled before", {}, true, 0}}) {
        if (cancelled) token->cancel();
        index = DiskUsageIndex::make(temporary.path()).value();
        const DiskUsageScan scan = scanner(limit).scan(folder.path().string(), index.get());
        EXPECT_TRUE(scan.stopped && !scan.complete && !scan.failure) << name;
        EXPECT_EQ(scan.entriesRead, read) << name;
        EXPECT_TRUE(std::ranges::all_of(scan.entries, &DiskUsageEntry::partial)) << name;
        if (read > 1) {
            EXPECT_TRUE(ask(folder.path("a")).stopped) << name;
            EXPECT_TRUE(ask(std::nullopt).entries[0].partial) << name;
        }
    }
}

TEST_F(DiskUsageScannerTest, whatIsPublishedCanBeAskedFor) {
    for (int file = 0; file < 50; ++file)
        folder.write("a/" + std::to_string(file), std::string(5000, 'x'));
    std::uint64_t last = 0;
    bool first = true;
    const DiskUsageScan scan =
        scanner({}, 0).scan(folder.path().string(), index.get(), [&](const DiskUsageScan& published) {
            EXPECT_GE(published.entriesRead, last);
            last = published.entriesRead;
            const DiskUsageScan found = ask(std::nullopt);
            EXPECT_EQ(found.entriesRead, published.entriesRead);
            EXPECT_EQ(found.bytes(), published.bytes());
            EXPECT_TRUE(!std::exchange(first, false) || found.entries.empty() || found.entries[0].partial);
        });
    EXPECT_EQ(last, scan.entriesRead);
    EXPECT_FALSE(ask(std::nullopt).entries.at(0).partial);
}

TEST_F(DiskUsageScannerTest, rowsAtTheTopStayFew) {
    std::vector<FakeDiskEntry> entries;
    for (std::size_t file = 0; file < mostDiskRows + 5; ++file)
        entries.push_back({.path = "/f" + std::to_string(file), .allocated = 512});
    fake.trees[folder.path("tree")] = tree(std::move(entries));
    const DiskUsageScan scan = scannerOn(fake).scan(folder.path("tree"), nullptr);
    ASSERT_EQ(scan.entries.size(), mostDiskRows + 1);
    EXPECT_EQ(scan.entries[0], (DiskUsageEntry{otherFilesPath, "More items", false, 5 * 512, false}));
}

TEST_F(DiskUsageScannerTest, namesThatCollideAllStay) {
    const std::string composed = "/Caf\xC3\xA9";
    const std::string decomposed = "/Cafe\xCC\x81";
    for (const auto& [first, second] : {std::pair(composed, decomposed), std::pair(decomposed, composed)}) {
        for (const int before : {0, 20}) { // within one insertion, and across two
            std::vector<FakeDiskEntry> entries{{.path = first, .kind = VN_DISK_DIRECTORY, .allocated = 512}};
            for (int file = 0; file < before; ++file)
                entries.push_back({.path = first + "/" + std::to_string(file), .allocated = 512});
            entries.push_back({.path = second, .kind = VN_DISK_DIRECTORY, .allocated = 512});
            entries.push_back({.path = second + "/inner", .allocated = 1024});
            // The folder was changed while it was read: a name comes twice, once as a folder.
            entries.push_back({.path = "/twice", .kind = VN_DISK_DIRECTORY, .allocated = 512});
            entries.push_back({.path = "/twice/x", .allocated = 512});
            entries.push_back({.path = "/twice", .kind = VN_DISK_DIRECTORY, .allocated = 512});
            entries.push_back({.path = "/twice/y", .allocated = 512});
            entries.push_back({.path = "/z", .kind = VN_DISK_DIRECTORY, .allocated = 512});
            entries.push_back({.path = "/z/w", .allocated = 512});
            fake.trees[folder.path("tree")] = tree(std::move(entries));
            index = DiskUsageIndex::make(temporary.path()).value();
            const DiskUsageScan scan = scannerOn(fake).scan(folder.path("tree"), index.get());
            EXPECT_TRUE(scan.complete && !scan.failure);
            EXPECT_EQ(ask(folder.path("tree") + first).entries.size(), static_cast<std::size_t>(before));
            EXPECT_THAT(names(ask(folder.path("tree") + second)), ElementsAre("inner"));
            EXPECT_THAT(names(ask(folder.path("tree/twice"))), testing::UnorderedElementsAre("x", "y"));
            EXPECT_THAT(names(ask(folder.path("tree/z"))), ElementsAre("w"));
            EXPECT_EQ(ask(std::nullopt).entries.size(), 4u);
        }
    }
}

TEST_F(DiskUsageScannerTest, nestOfFiveThousandStaysSmall) {
    std::vector<FakeDiskEntry> entries;
    std::string path;
    for (int level = 0; level < 5000; ++level) {
        path += "/level";
        if (level % 50 == 0) path += "-" + std::to_string(level);
        entries.push_back({.path = path, .kind = VN_DISK_DIRECTORY, .allocated = 512});
    }
    const std::string deepest = folder.path("tree") + path;
    fake.trees[folder.path("tree")] = tree(std::move(entries));
    const DiskUsageScan scan = scannerOn(fake).scan(folder.path("tree"), index.get());
    EXPECT_TRUE(scan.complete);
    EXPECT_EQ(scan.entries.at(0).bytes, 5000u * 512);
    EXPECT_TRUE(ask(deepest).entries.empty());
}

TEST_F(DiskUsageScannerTest, removedIndexIsSaidAndLeavesNothing) {
    folder.write("a", "x");
    index->discard();
    const DiskUsageScan scan = scanner().scan(folder.path().string(), index.get());
    EXPECT_TRUE(scan.stopped && !scan.complete);
    EXPECT_EQ(scan.failure, "Couldn’t save the disk map. Try rescanning.");
    EXPECT_FALSE(index->folder(std::nullopt));
    EXPECT_TRUE(std::filesystem::is_empty(temporary.path()));
}

/// Runs something in a child and gives back its exit status, or the signal that ended it.
template <typename Work>
int inChild(Work work) {
    const pid_t child = fork();
    if (child == 0) _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST_F(DiskUsageScannerTest, fullTemporaryDiskEndsTheScan) {
    for (int file = 0; file < 3000; ++file)
        folder.write("folder/some name of a file that takes its room " + std::to_string(file), "");
    const int status = inChild([&] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit room{65'536, 65'536};
        setrlimit(RLIMIT_FSIZE, &room);
        const DiskUsageScan scan = scanner({}, 0).scan(folder.path().string(), index.get());
        const bool said = scan.failure && scan.stopped && !scan.complete;
        return said && std::ranges::all_of(scan.entries, &DiskUsageEntry::partial) ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
    // What was committed before can be asked for.
    EXPECT_TRUE(index->folder(std::nullopt));
}

TEST_F(DiskUsageScannerTest, onlyWhatTheDeadLeftIsRemoved) {
    const std::filesystem::path living = index->directory();
    std::filesystem::create_directory(temporary.path("varnet-disk-map-stale"));
    const std::string file = temporary.write("varnet-disk-map-file", "x");
    std::filesystem::create_directory(temporary.path("other"));
    std::filesystem::create_directory_symlink(temporary.path("other"),
                                              temporary.path("varnet-disk-map-link"));
    EXPECT_EQ(inChild([&] {
                  const auto left = DiskUsageIndex::make(temporary.path());
                  raise(SIGKILL);
                  return left ? 0 : 1;
              }),
              -SIGKILL);
    DiskIndexFolder::removeStale(temporary.path());
    std::vector<std::string> left;
    for (const auto& entry : std::filesystem::directory_iterator(temporary.path()))
        left.push_back(entry.path().string());
    EXPECT_THAT(left, testing::UnorderedElementsAre(living.string(), file, temporary.path("other"),
                                                    temporary.path("varnet-disk-map-link")));
    EXPECT_EQ(std::filesystem::status(living).permissions(), std::filesystem::perms::owner_all);
    index.reset();
    EXPECT_FALSE(std::filesystem::exists(living));
}

TEST_F(DiskUsageScannerTest, killedWriterLeavesAReadableIndex) {
    for (int file = 0; file < 200; ++file)
        folder.write("a/" + std::to_string(file), "x");
    EXPECT_EQ(inChild([&] {
                  scanner({}, 0).scan(folder.path().string(), index.get(), [](const DiskUsageScan& scan) {
                      if (scan.entriesRead > 100) raise(SIGKILL);
                  });
                  return 0;
              }),
              -SIGKILL);
    const DiskUsageScan scan = ask(folder.path("a"));
    EXPECT_FALSE(scan.complete);
    EXPECT_GT(scan.entries.size(), 50u);
}

} // namespace
} // namespace varnet
