#include "VarnetApp/Previews/PreparedDisk.h"
#include "VarnetApp/StorageMap/TreemapItem.h"
#include "VarnetApp/WholeDiskViews/WholeDiskModel.h"
#include "probes/SystemProbes.h"
#include "tests/VarnetApp/MainViews/MainWindowStage.h"
#include "tests/fakes/FakeFileOpening.h"

#include <QTest>

namespace varnet {
namespace {

/// The page over a small tree of real files, or over prepared data.
class WholeDiskPageTests : public MainWindowStage {
protected:
    ~WholeDiskPageTests() override { close(); }

    void open(bool prepared) {
        close();
        files = &shown;
        disk = std::make_unique<WholeDiskStore>(WholeDiskStore::Setup{.probes = realProbes,
                                                                      .clock = clock,
                                                                      .mainQueue = jobs,
                                                                      .scans = jobs,
                                                                      .questions = jobs,
                                                                      .files = &shown,
                                                                      .preview = prepared,
                                                                      .root = tree.path().string(),
                                                                      .temporary = folder.path()});
        storage = std::make_unique<DiskStorageStore>(DiskStorageStore::Setup{.probes = realProbes,
                                                                             .clock = clock,
                                                                             .mainQueue = jobs,
                                                                             .jobs = jobs,
                                                                             .home = tree.path().string(),
                                                                             .preview = true},
                                                     *disk);
        storage->page.wholeDisk = true;
        MainWindowStage::open(PreparedMachine::calm(), {1040, 720}, Page::storage);
    }
    void openPrepared() {
        open(true);
        disk->setPreview(PreparedDisk::homeFolder(), PreparedDisk::capacity(), PreparedDisk::home);
        turn();
    }
    void turn() {
        jobs.run();
        QCoreApplication::processEvents();
        (void)view->grabWindow();
    }
    WholeDiskModel& model() const { return *find<WholeDiskModel>(); }
    TreemapItem& map() const { return *find<TreemapItem>(); }
    QString shownPath() const { return QString::fromStdString(disk->path().value_or("top")); }
    QString inTree(const char* below) const { return QString::fromStdString(tree.path(below)); }

    TemporaryFolder tree;
    HandQueue jobs{clock};
    SystemProbes realProbes;
    FakeFileOpening shown;
    std::unique_ptr<WholeDiskStore> disk;
};

TEST_F(WholeDiskPageTests, aRealTreeIsScannedAndWalkedByKeysAndClicks) {
    ASSERT_TRUE(PreparedDisk::measuredTree(tree.path()));
    open(false);
    EXPECT_NE(called("See what fills your disk. Scan once, then walk through every folder by its size. "
                     "Nothing is moved or changed."),
              nullptr);
    clickOn("Scan whole disk");
    EXPECT_NE(called("Stop scan"), nullptr);
    EXPECT_NE(called("Finding the biggest files…"), nullptr);
    turn();
    turn();
    EXPECT_NE(called("Rescan"), nullptr);
    ASSERT_EQ(model().map()->count(), 6) << "five, and one for the rest";
    ASSERT_NE(item("row code"), nullptr);

    // Into the largest by keys, up again, and into another by a click on its row.
    map().forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Return);
    EXPECT_EQ(shownPath(), inTree("code"));
    turn();
    EXPECT_NE(item("row storefront"), nullptr);
    EXPECT_EQ(view->activeFocusItem(), &map());
    key(Qt::Key_Backspace);
    turn();
    EXPECT_EQ(shownPath(), QString::fromStdString(tree.path().string()));
    click(item("row Videos"));
    turn();
    EXPECT_EQ(shownPath(), inTree("Videos"));

    // A file is shown where it is; the way back is a crumb.
    click(item("row talk.mp4"));
    EXPECT_EQ(shown.revealed, std::vector<std::string>{tree.path("Videos/talk.mp4")});
    EXPECT_EQ(shownPath(), inTree("Videos"));
    clickOn("Startup disk");
    EXPECT_EQ(shownPath(), "top");
}

TEST_F(WholeDiskPageTests, rowsAndTilesLightEachOther) {
    openPrepared();
    QQuickItem* const row = item("row Videos");
    ASSERT_NE(row, nullptr);
    QTest::mouseMove(view.get(), row->mapToScene({100, 20}).toPoint());
    EXPECT_TRUE(QTest::qWaitFor([&] { return map().hoveredKey() == "/home/dana/Videos"; }, 1000));
    QTest::mouseMove(view.get(), map().mapToScene(map().cells()[0].frame.center()).toPoint());
    EXPECT_TRUE(QTest::qWaitFor([&] { return item("row code")->property("lit").toBool(); }, 1000));
    EXPECT_FALSE(item("row Videos")->property("lit").toBool());
    EXPECT_NE(called("Startup disk, Used 682.4 GB, Free 317.8 GB"), nullptr);
    EXPECT_NE(called("Downloads 30.1 GB"), nullptr);
}

TEST_F(WholeDiskPageTests, searchListAndChoicesNarrowTheSameItems) {
    openPrepared();
    store->requestSearch();
    EXPECT_EQ(view->activeFocusItem(), item("diskSearch"));
    for (const Qt::Key letter : {Qt::Key_V, Qt::Key_I, Qt::Key_D})
        key(letter);
    EXPECT_EQ(model().rows()->rowCount(), 1);
    EXPECT_EQ(model().map()->count(), 1);
    key(Qt::Key_X);
    EXPECT_NE(called("No matching items. Try a different name."), nullptr);
    key(Qt::Key_Escape);
    EXPECT_EQ(model().map()->count(), 6);

    item("diskLayout")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Right);
    EXPECT_TRUE(model().asList());
    EXPECT_EQ(item("diskMap"), nullptr);
    turn();
    const int first = model().rows()->rowCount();
    click(item("showMore"));
    EXPECT_EQ(model().rows()->rowCount(), 28) << "from " << first;
    click(item("showEmpty"));
    EXPECT_EQ(model().rows()->rowCount(), 31);
}

TEST_F(WholeDiskPageTests, whatIsNotReachedIsExplained) {
    openPrepared();
    clickOn("Some folders couldn’t be read. About access.");
    ASSERT_NE(called("Open Full Disk Access"), nullptr);
    clickOn("Open Full Disk Access");
    ASSERT_NE(item("accessDone"), nullptr);
    key(Qt::Key_Escape);
    EXPECT_TRUE(isGone("accessDone"));
}

} // namespace
} // namespace varnet
