#include "VarnetApp/Previews/PreparedStorage.h"
#include "VarnetApp/StorageMap/TreemapItem.h"
#include "tests/VarnetApp/StorageViews/StorageWindow.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

namespace varnet {
namespace {

using StoragePageTest = StorageWindow;

constexpr const char* storefront = "/home/dana/code/storefront";

TEST_F(StoragePageTest, tellsEachStateApart) {
    const auto scanning = [](PreparedStorage::Scan scan) {
        return [scan](DiskStorageStore& to) { to.setPreview(scan, true, "2/9 · shop · main"); };
    };
    const auto scanned = [](PreparedStorage::Scan scan) {
        return [scan](DiskStorageStore& to) { to.setPreview(scan); };
    };
    const QString progress =
        "Scanning · No automatic cleanup 2/9 · shop · main The map fills in as the scan runs.";
    const QString search = "Search projects or worktrees";
    const struct {
        const char* name;
        std::function<void(DiskStorageStore&)> state;
        QString shown; ///< names with strokes between them
        QString absent;
    } rows[]{
        {"before the first scan", scanned(nullptr),
         "Find your projects and agent worktrees. Scan agent worktrees and known projects. Files stay "
         "exactly where they are until you review them.|Scan projects|Add folder",
         "Rescan|Allocated —"},
        {"nothing found yet", scanning(nullptr), "Allocated —|Stop scan|" + progress, "Rescan|" + search},
        {"half of it is measured", scanning(PreparedStorage::halfway()),
         "Stop scan|Projects 14|" + search + '|' + progress, "Rescan"},
        {"stopped", scanned(PreparedStorage::stopped()),
         "Rescan|Some folders weren’t fully measured Totals include only what could be read. Rescan to try "
         "again. Couldn’t read sealed. Add that folder to grant access. Scan stopped. Some folders are still "
         "unmeasured. Rescan to finish.",
         "Stop scan"},
        {"all is well", scanned(PreparedStorage::complete()),
         "Rescan|Add folder|Allocated 137.4 GB|Worktrees 9|storefront 46.8 GB",
         "Stop scan|Dismiss storage message"},
        {"nothing was found", scanned(PreparedStorage::nothing()),
         "No projects found. Add a folder that holds some, then rescan.|Projects 0", search},
    };
    openPrepared(nullptr);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        row.state(*store);
        (void)view->grabWindow();
        for (const QString& name : row.shown.split('|'))
            EXPECT_NE(called(name), nullptr) << name.toStdString();
        for (const QString& name : row.absent.split('|'))
            EXPECT_EQ(called(name), nullptr) << name.toStdString();
    }
}

TEST_F(StoragePageTest, isWorkedByKeys) {
    const auto type = [this](const char* letters) {
        for (; *letters; ++letters)
            QTest::keyClick(view.get(), *letters);
    };
    openPrepared(PreparedStorage::measured());
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(view->activeFocusItem(), item("storageSearch"));
    type("warehouse");
    EXPECT_NE(called("No matching projects. Try another search or show all projects."), nullptr);
    press("showAllProjects");
    EXPECT_EQ(page().search(), "");
    type("passkeys");
    EXPECT_EQ(page().rows()->rowCount(), 2) << "the family and the folder that was sought";
    key(Qt::Key_Escape);
    key(Qt::Key_Down);
    EXPECT_EQ(view->activeFocusItem(), item("storageRow storefront"));
    key(Qt::Key_Right);
    EXPECT_EQ(page().rows()->rowCount(), 18);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_NE(item("closeDetail"), nullptr);
    ASSERT_TRUE(store->selected());
    EXPECT_EQ(store->selected()->path, storefront);
    key(Qt::Key_Escape);
    EXPECT_FALSE(store->selected());
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->activeFocusItem() == item("storageRow main"); }, 1000));
    key(Qt::Key_Up);
    key(Qt::Key_Left);
    EXPECT_EQ(page().rows()->rowCount(), 14);

    auto* const map = qobject_cast<TreemapItem*>(item("projectMap"));
    ASSERT_NE(map, nullptr);
    map->forceActiveFocus(Qt::TabFocusReason);
    map->setCurrentKey(storefront);
    key(Qt::Key_Return);
    EXPECT_EQ(page().property("crumbs").toStringList(), QStringList({"All projects", "storefront"}));
    map->setCurrentKey(QString(storefront) + "/.claude/worktrees/checkout");
    key(Qt::Key_Return);
    EXPECT_EQ(page().property("crumbs").toStringList().back(), "feature/checkout");
    press("projectDetails");
    EXPECT_EQ(store->selected()->branch, "feature/checkout");
    store->select({});
    key(Qt::Key_Backspace);
    press("projectCrumb0");
    EXPECT_EQ(page().property("crumbs").toStringList().size(), 1);
}

TEST_F(StoragePageTest, tileAndRowLightEachOther) {
    openPrepared(PreparedStorage::measured());
    auto* const map = qobject_cast<TreemapItem*>(item("projectMap"));
    QQuickItem* const row = item("storageRow mobile-shell");
    QTest::mouseMove(view.get(), row->mapToScene({80, 20}).toPoint());
    EXPECT_TRUE(QTest::qWaitFor([&] { return map->hoveredKey().endsWith("/mobile-shell"); }, 1000));
    QTest::mouseMove(view.get(), map->mapToScene({40, 20}).toPoint());
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return item("storageRow storefront")->property("lit").toBool(); }, 1000));
    EXPECT_FALSE(row->property("lit").toBool());
}

TEST_F(StoragePageTest, nothingIsDrawnAnewForTheSameScan) {
    const auto scan = PreparedStorage::measured();
    openPrepared(scan);
    QSignalSpy map(page().map(), &TreemapModel::changed);
    QSignalSpy rows(page().rows(), &QAbstractItemModel::dataChanged);
    store->setPreview(std::make_shared<const StorageScan>(*scan));
    EXPECT_EQ(map.count() + rows.count(), 0);
}

TEST_F(StoragePageTest, detailsSayWhatHolds) {
    openPrepared(PreparedStorage::measured());
    const char* const worktree = "Remove whole worktrees through the tool that created them. This app keeps "
                                 "the checkout, branch and Git metadata intact.";
    const char* const managed = "Finished with this worktree? Archive it in Conductor so its workspace "
                                "records stay in sync.";
    const char* const nothing = "No fully measured, Git-ignored dependency or cache folders found";
    const struct {
        const char* branch;
        bool worktree, managed, candidates;
    } rows[]{{"main", false, false, true},
             {"feature/checkout", true, false, true},
             {"spike/passkeys", true, false, false},
             {"dana/spike", true, true, true},
             {"Shared files", false, true, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.branch);
        store->select(PreparedStorage::project(row.branch));
        ASSERT_NE(item("closeDetail"), nullptr);
        const auto shown = [&](const char* words) {
            std::function<bool(QQuickItem*)> in = [&](QQuickItem* at) {
                if (!at->isVisible()) return false;
                if (at->property("text").toString() == words) return true;
                return std::ranges::any_of(at->childItems(), in);
            };
            return in(view->contentItem());
        };
        EXPECT_EQ(shown(worktree), row.worktree);
        EXPECT_EQ(shown(managed), row.managed);
        EXPECT_EQ(shown(nothing), !row.candidates);
        EXPECT_TRUE(
            shown("Age and a clean Git status don’t prove a workspace is disposable. Untracked files, "
                  "local commits and app records can still matter."));
        EXPECT_TRUE(shown("Show this exact folder in Finder"));
    }
}

TEST_F(StoragePageTest, inTheLeastWindowTheConfirmationComesIntoView) {
    openPrepared(PreparedStorage::measured(), {720, 520});
    store->openReview(PreparedStorage::project("feature/checkout"));
    QQuickItem* const confirmation = item("confirmReview");
    ASSERT_NE(confirmation, nullptr);
    const double foot = item("moveToTrash")->mapToScene({0, 0}).y();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return confirmation->mapToScene({0, confirmation->height()}).y() < foot; }, 1000));
    key(Qt::Key_Space);
    press("moveToTrash");
    EXPECT_EQ(store->message(), "Example data — no files were moved.");
    EXPECT_FALSE(store->review());
}

TEST_F(StoragePageTest, theScopeAndTheLayoutOutliveThePage) {
    openPrepared(PreparedStorage::measured());
    item("storageLayout")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Right);
    EXPECT_TRUE(page().listOnly());
    key(Qt::Key_1, Qt::ControlModifier);
    key(Qt::Key_5, Qt::ControlModifier);
    EXPECT_TRUE(page().listOnly());
    item("storageScope")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Right);
    EXPECT_EQ(find<ProjectStorageModel>(), nullptr);
    key(Qt::Key_1, Qt::ControlModifier);
    key(Qt::Key_5, Qt::ControlModifier);
    EXPECT_EQ(find<ProjectStorageModel>(), nullptr);
}

TEST_F(StoragePageTest, savedFoldersAreFocusedAndTakenOff) {
    makeProject("code/mine");
    makeProject(".codex/worktrees/w");
    open();
    store->addFolder(home.path("code"), {});
    settle();
    EXPECT_EQ(page().rows()->rowCount(), 1);
    press("storageFolders");
    press("allFolders");
    settle();
    EXPECT_EQ(page().rows()->rowCount(), 2);
    press("storageFolders");
    press("folder0");
    EXPECT_FALSE(store->scanning()) << "that folder was scanned along";
    EXPECT_EQ(page().rows()->rowCount(), 1);
    EXPECT_EQ(page().property("crumbs").toStringList(), QStringList("code"));
    press("storageFolders");
    press("folder0Remove");
    settle();
    EXPECT_TRUE(store->savedFolders().empty());
    EXPECT_EQ(page().rows()->rowCount(), 1) << "the agent's own";
    EXPECT_NE(item("addFolder"), nullptr);
    EXPECT_TRUE(std::filesystem::exists(home.path("code/mine/file")));
}

} // namespace
} // namespace varnet
