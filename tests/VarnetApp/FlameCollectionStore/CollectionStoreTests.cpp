#include "VarnetApp/FlameCollectionStore/CollectionFile.h"
#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetCore/Base/SmallFile.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/InlineQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace varnet {
namespace {

constexpr const char* unreadable =
    "Couldn’t read your collection. The saved file is preserved. Reset the collection in Settings to start "
    "again.";
constexpr const char* unsaved =
    "Couldn’t save your collection. Check available disk space and folder access.";

class CollectionStoreTest : public testing::Test {
protected:
    std::filesystem::path state() const { return folder.path() / "state"; }
    std::filesystem::path file() const { return state() / CollectionFile::name; }

    FlameCollectionStore::Setup setup() {
        return {.clock = clock, .mainQueue = queue, .writer = writer, .file = file()};
    }
    std::vector<std::filesystem::path> backups() const {
        std::vector<std::filesystem::path> found;
        for (const auto& entry : std::filesystem::directory_iterator(state()))
            if (entry.path().filename().string().starts_with("collection-before-restore-"))
                found.push_back(entry.path());
        return found;
    }
    MonitorSnapshot pass() const {
        MonitorSnapshot snapshot;
        snapshot.date = clock.now();
        snapshot.systemCPU = 50;
        return snapshot;
    }
    FlameArchive onDisk() const { return CollectionFile::read(file()).value(); }

    TemporaryFolder folder;
    FakeClock clock;
    HandQueue queue{clock};
    InlineQueue writer;
};

TEST_F(CollectionStoreTest, whatCannotBeReadIsNeverWrittenOver) {
    FlameArchive archive = FlameArchive::beginning(clock.now());
    const std::string whole = archive.encode();
    archive.schema = 2;
    struct Row {
        const char* oddity;
        std::string text;
        bool isRead;
    };
    for (const Row& row : std::vector<Row>{
             {"one byte below the limit", whole + std::string(1'999'999 - whole.size(), ' '), true},
             {"at the limit", whole + std::string(2'000'000 - whole.size(), ' '), false},
             {"of a newer schema", archive.encode(), false},
             {"cut off", whole.substr(0, whole.size() / 2), false},
             {"empty", "", false},
             {"not UTF-8", "\xff\xfe", false},
             {"nested without end", std::string(100'000, '['), false}}) {
        SCOPED_TRACE(row.oddity);
        folder.write("state/flame-collection.json", row.text);
        FlameCollectionStore store(setup());
        EXPECT_EQ(store.warning(), row.isRead ? "" : unreadable);
        store.cleaned(1, 1);
        store.observe(pass());
        store.save(FlameCollectionStore::Saving::now);
        EXPECT_EQ(readSmallFile(file().string(), 10'000'000) == row.text, !row.isRead);
        EXPECT_EQ(store.archive().metric("cleanups"), 1) << "counting goes on";
        if (row.isRead) continue;
        store.reset();
        EXPECT_EQ(store.warning(), "");
        EXPECT_EQ(onDisk().metric("cleanups"), 0) << "the one way on";
        store.cleaned(1, 1);
        EXPECT_EQ(onDisk().metric("cleanups"), 1);
    }
}

TEST_F(CollectionStoreTest, samplesSaveOnceAMinuteAndDeedsAtOnce) {
    FlameCollectionStore store(setup());
    store.observe(pass());
    EXPECT_EQ(onDisk().days.size(), 1U) << "the first sample finds nothing saved lately";
    for (int second = 0; second < 59; ++second) {
        queue.advance(1);
        store.observe(pass());
    }
    EXPECT_EQ(onDisk().metric("seconds"), 0);
    queue.advance(1);
    store.observe(pass());
    EXPECT_EQ(onDisk().metric("seconds"), 60);
    EXPECT_TRUE(onDisk().unlocked.contains("first-light"));
    queue.advance(1);
    store.observe(pass());
    store.inspect(GroupKind::application);
    EXPECT_EQ(onDisk().metric("seconds"), 61);
    EXPECT_EQ(onDisk().inspectedKinds, std::set<std::string>{"application"});
    EXPECT_EQ(FlameCollectionStore(setup()).archive(), store.archive()) << "the next run goes on from there";
}

TEST_F(CollectionStoreTest, aBadgeIsAnnouncedForEightSeconds) {
    FlameCollectionStore store(setup());
    store.cleaned(1, 20'000'000'000);
    EXPECT_EQ(store.latestBadge(), "spring") << "the first of three";
    queue.advance(3);
    for (const GroupKind kind : {GroupKind::application, GroupKind::project, GroupKind::system})
        store.inspect(kind);
    EXPECT_EQ(store.latestBadge(), "detective");
    queue.advance(7.9);
    EXPECT_EQ(store.latestBadge(), "detective") << "the first one's time does not end it";
    queue.advance(0.2);
    EXPECT_EQ(store.latestBadge(), "");
    store.cleaned(1, 20'000'000'000);
    EXPECT_EQ(store.latestBadge(), "big-move");
    store.dismissBadge();
    store.reset();
    queue.advance(1);
    store.cleaned(1, 1);
    queue.advance(7.5);
    EXPECT_EQ(store.latestBadge(), "spring") << "the timer of what was taken away is no concern of it";
}

TEST_F(CollectionStoreTest, savingThatFailsIsTriedAgain) {
    folder.write("state", "a file where the folder should be");
    FlameCollectionStore store(setup());
    EXPECT_EQ(store.warning(), "");
    store.cleaned(1, 1);
    queue.run();
    EXPECT_EQ(store.warning(), unsaved);
    std::filesystem::remove(state());
    store.save(FlameCollectionStore::Saving::now);
    EXPECT_EQ(store.warning(), "");
    EXPECT_EQ(onDisk().metric("cleanups"), 1);
    std::filesystem::remove_all(state());
    folder.write("state", "again");
    store.reset();
    EXPECT_EQ(store.warning(), unsaved) << "a reset that is not kept says so";
}

TEST_F(CollectionStoreTest, restoreRefusesWhatNoStartWouldRead) {
    FlameCollectionStore store(setup());
    store.cleaned(1, 1);
    const FlameArchive before = onDisk();
    FlameArchive endless = FlameArchive::beginning(clock.now());
    endless.tools.insert(std::string(CollectionFile::tooLarge, 'x'));
    EXPECT_TRUE(store.restore(endless));
    EXPECT_EQ(onDisk(), before);
    EXPECT_EQ(store.archive(), before);
    EXPECT_TRUE(backups().empty());
}

TEST_F(CollectionStoreTest, restoreKeepsACopyAndOutranksWaitingSaves) {
    FlameArchive other = FlameArchive::beginning({700'000'000});
    other.metrics["cleanups"] = 7;
    {
        ThreadQueue thread;
        FlameCollectionStore store({.clock = clock, .mainQueue = writer, .writer = thread, .file = file()});
        EXPECT_EQ(store.restore(other), std::nullopt);
        EXPECT_TRUE(backups().empty()) << "there was nothing to keep";
        for (int number = 0; number < 20; ++number)
            store.cleaned(1, 1);
        EXPECT_EQ(store.restore(other), std::nullopt);
        EXPECT_EQ(store.archive(), other);
    }
    EXPECT_EQ(onDisk(), other);
    ASSERT_EQ(backups().size(), 1U);
    EXPECT_EQ(CollectionFile::read(backups()[0])->metric("cleanups"), 27);

    std::filesystem::remove(file());
    std::filesystem::create_directories(file()); // no copy can be made of a folder
    FlameCollectionStore store(setup());
    EXPECT_EQ(store.warning(), unreadable);
    const FlameArchive before = store.archive();
    EXPECT_TRUE(store.restore(other));
    EXPECT_EQ(store.archive(), before);
    EXPECT_EQ(store.warning(), unreadable);
}

TEST_F(CollectionStoreTest, preparedDataIsNeverWritten) {
    FlameArchive sample = FlameArchive::beginning(clock.now());
    sample.unlocked["spring"] = clock.now();
    FlameCollectionStore store(
        {.clock = clock, .mainQueue = queue, .writer = writer, .file = {}, .prepared = sample});
    EXPECT_EQ(store.archive(), sample);
    store.cleaned(1, 1);
    store.save(FlameCollectionStore::Saving::now);
    store.reset();
    EXPECT_EQ(store.restore(sample), std::nullopt);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

} // namespace
} // namespace varnet
