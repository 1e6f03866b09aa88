#include "VarnetApp/StorageStore/WholeDiskStore.h"
#include "probes/fake/FakeProbes.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <iterator>
#include <memory>

namespace varnet {
namespace {

/// The store on a pretended disk, its three queues turned by hand.
class WholeDiskStoreTests : public testing::Test {
protected:
    WholeDiskStoreTests() {
        struct stat status{};
        stat(root.c_str(), &status);
        const auto entry = [&](const char* below, std::uint32_t kind, std::uint64_t bytes) {
            return FakeDiskEntry{.path = root + below,
                                 .kind = kind,
                                 .allocated = bytes,
                                 .inode = ++inodes,
                                 .device = static_cast<std::int32_t>(status.st_dev)};
        };
        probes.trees[root].entries = {
            entry("", VN_DISK_DIRECTORY, 0),    entry("/a", VN_DISK_DIRECTORY, 10),
            entry("/a/one", VN_DISK_FILE, 500), entry("/b", VN_DISK_DIRECTORY, 10),
            entry("/b/two", VN_DISK_FILE, 90),
        };
        store = std::make_unique<WholeDiskStore>(setup());
        questions.run(); // stale folders are swept
    }
    WholeDiskStore::Setup setup() {
        return {.probes = probes,
                .clock = clock,
                .mainQueue = main,
                .scans = scans,
                .questions = questions,
                .root = root,
                .temporary = folder.path(),
                .volumes = [] { return DiskVolumes{}; },
                .readCapacity = [this]() -> std::optional<DiskCapacity> {
                    return DiskCapacity{"Disk", 1'000, free};
                }};
    }
    /// Until nothing is left to do.
    void settle() {
        for (int i = 0; i < 6; ++i) {
            scans.run();
            main.run();
            questions.run();
        }
        main.run();
    }
    std::string names() const {
        if (!store->scan()) return "none";
        std::string text;
        for (const DiskUsageEntry& entry : store->scan()->entries)
            text += entry.name + " ";
        return text;
    }
    long folders() const { return std::distance(std::filesystem::directory_iterator(folder.path()), {}); }

    TemporaryFolder folder;
    TemporaryFolder tree; ///< a real folder for a pretended tree to hang on
    const std::string root = tree.path().string();
    std::uint64_t inodes = 0;
    FakeClock clock{Date{1000}};
    HandQueue main{clock};
    HandQueue scans{clock};
    HandQueue questions{clock};
    FakeProbes probes;
    std::uint64_t free = 300;
    std::unique_ptr<WholeDiskStore> store;
};

TEST_F(WholeDiskStoreTests, scansOnceAndThenAsksTheIndex) {
    store->open(std::nullopt, false);
    EXPECT_TRUE(store->scanning());
    EXPECT_EQ(store->capacity()->free, 300U);
    free = 200;
    settle();
    EXPECT_FALSE(store->scanning());
    EXPECT_EQ(store->capacity()->free, 200U) << "the disk has filled meanwhile";
    EXPECT_EQ(names(), "a b ");
    EXPECT_EQ(store->itemsChecked(), store->scan()->entriesRead);
    store->open(root + "/a", false);
    EXPECT_FALSE(store->scan()) << "an old folder under a new title";
    EXPECT_EQ(scans.waiting(), 0U) << "a folder is no reason to scan again";
    settle();
    EXPECT_EQ(names(), "one ");
}

TEST_F(WholeDiskStoreTests, quickFolderChangesShowOnlyTheLast) {
    store->open(std::nullopt, false);
    settle();
    store->open(root + "/a", false);
    store->open(root + "/b", false);
    EXPECT_EQ(questions.waiting(), 1U) << "one question at a time";
    questions.run();
    main.run();
    EXPECT_EQ(names(), "none") << "the answer about the first folder";
    EXPECT_EQ(questions.waiting(), 1U);
    settle();
    EXPECT_EQ(names(), "two ");
    EXPECT_EQ(store->path(), root + "/b");
}

TEST_F(WholeDiskStoreTests, aStoppedScanKeepsItsMapAndSaysNothingMore) {
    // Halfway there is something to see, and the user has seen enough.
    probes.trees[root].onStep = [this](std::size_t index) {
        if (index != 3) return;
        clock.advance(1);
    };
    store->open(std::nullopt, false);
    scans.run();
    std::size_t told = 0;
    QObject::connect(store.get(), &WholeDiskStore::changed, [&] {
        ++told;
        if (store->scanning()) store->cancel();
    });
    main.advance(1); // the queue that scanned has put the clock back
    EXPECT_FALSE(store->scanning());
    questions.run();
    main.run();
    const std::size_t atEnd = told;
    settle();
    EXPECT_EQ(told, atEnd) << "the end of a scan that nobody waits for";
    store->open(std::nullopt, false);
    EXPECT_EQ(scans.waiting(), 0U) << "its index can still be asked";
    settle();
    EXPECT_NE(names(), "none");
}

TEST_F(WholeDiskStoreTests, aSecondScanTakesThePlaceOfTheFirst) {
    store->open(std::nullopt, false);
    store->open(std::nullopt, true);
    EXPECT_EQ(scans.waiting(), 2U);
    settle();
    EXPECT_FALSE(store->scanning());
    EXPECT_EQ(names(), "a b ");
    EXPECT_EQ(folders(), 1) << "the first index has gone with its scan";
    store->open(std::nullopt, true);
    EXPECT_EQ(names(), "none");
    settle();
    EXPECT_EQ(names(), "a b ");
    EXPECT_EQ(folders(), 1);
}

TEST_F(WholeDiskStoreTests, troubleIsSaidAndLeavesWhatIsThere) {
    store->open(std::nullopt, false);
    settle();
    for (const auto& made : std::filesystem::directory_iterator(folder.path()))
        std::filesystem::remove_all(made.path());
    store->open(std::nullopt, false);
    settle();
    EXPECT_EQ(store->failure(), "Couldn’t open the disk map. Try rescanning.");
    EXPECT_EQ(names(), "a b ");
    store->open(std::nullopt, true);
    EXPECT_EQ(store->failure(), std::nullopt);
    settle();
    EXPECT_EQ(names(), "a b ");
    store->discard();
    std::filesystem::remove_all(folder.path());
    store->open(std::nullopt, true);
    EXPECT_EQ(store->failure(), "Couldn’t create the disk map. Try rescanning.");
    EXPECT_FALSE(store->scanning());
}

TEST_F(WholeDiskStoreTests, goesWhileWorkIsUnderWay) {
    store->open(std::nullopt, false);
    scans.run();
    store->open(root + "/a", false);
    store.reset();
    settle();
    EXPECT_EQ(folders(), 0);
}

} // namespace
} // namespace varnet
