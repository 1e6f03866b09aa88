// A folder from the scan to the trash and back, in a window and on a real disk.

#include "VarnetApp/Platform/DesktopTrash.h"
#include "tests/VarnetApp/StorageViews/StorageWindow.h"
#include "tests/fakes/ChildProcess.h"

#include <QTest>
#include <QUrl>

#include <fstream>
#include <iterator>

namespace varnet {
namespace {

namespace fs = std::filesystem;

class StorageCleaningTest : public StorageWindow {
protected:
    StorageCleaningTest() {
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(home.path("data")));
        real_ = platform::makeTrash();
        bin = real_.get();
        make();
        makeProject(".codex/worktrees/shop", {"web"});
    }
    ~StorageCleaningTest() override {
        view.reset();
        store.reset();
        qunsetenv("XDG_DATA_HOME");
    }

    void scanAndOpenReview() {
        open();
        press("startScan");
        EXPECT_TRUE(store->scanning());
        settle();
        press("storageRow shop");
        press("reviewProject");
        ASSERT_TRUE(store->review());
    }
    std::string inTrash(const std::string& below) const { return home.path("data/Trash/" + below); }
    /// What a desktop does to restore: the information file says where the folder came from.
    void restore(const std::string& name) const {
        std::ifstream stream(inTrash("info/" + name + ".trashinfo"));
        std::string line;
        std::getline(stream, line);
        ASSERT_EQ(line, "[Trash Info]");
        std::string from;
        while (std::getline(stream, line))
            if (line.starts_with("Path="))
                from = QUrl::fromPercentEncoding(QByteArray::fromStdString(line.substr(5))).toStdString();
        ASSERT_FALSE(from.empty());
        fs::rename(inTrash("files/" + name), from);
        fs::remove(inTrash("info/" + name + ".trashinfo"));
    }

    std::unique_ptr<Trash> real_;
};

TEST_F(StorageCleaningTest, aReviewedFolderGoesAndComesBack) {
    const std::string folder = home.path(".codex/worktrees/shop/node_modules");
    scanAndOpenReview();
    EXPECT_FALSE(usable("moveToTrash"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->activeFocusItem() == item("confirmReview"); }, 1000));
    click(item("moveToTrash"));
    EXPECT_FALSE(store->cleaning()) << "nobody has confirmed it";
    press("candidate web/node_modules");
    item("confirmReview")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Space);
    EXPECT_TRUE(usable("moveToTrash"));
    press("moveToTrash");
    EXPECT_TRUE(store->cleaning());
    EXPECT_NE(called("Checking files and running processes…"), nullptr);
    key(Qt::Key_Escape);
    EXPECT_TRUE(store->review()) << "it cannot be left while folders move";
    settle();
    EXPECT_TRUE(isGone("moveToTrash"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->activeFocusItem() == item("storageRow shop"); }, 1000))
        << "the keyboard is where it was before the sheets";

    EXPECT_FALSE(fs::exists(folder));
    EXPECT_TRUE(fs::exists(home.path(".codex/worktrees/shop/web/node_modules/b/file"))) << "its tick was off";
    EXPECT_TRUE(fs::exists(inTrash("files/node_modules/a/file")));
    EXPECT_NE(called("Moved 1 folder to Trash. Space is freed when you empty Trash. Reinstall dependencies "
                     "before using that project again."),
              nullptr);
    ASSERT_EQ(credited.size(), 1);
    EXPECT_EQ(credited[0].first, 1);
    press("showInTrash");
    EXPECT_EQ(files.revealed, std::vector{inTrash("files/node_modules")});
    clickOn("Dismiss storage message");
    EXPECT_EQ(called("Show in Trash"), nullptr);

    restore("node_modules");
    EXPECT_TRUE(fs::exists(folder + "/a/file"));
    press("rescan");
    settle();
    EXPECT_EQ(project(".codex/worktrees/shop")->candidates.size(), 2);
}

TEST_F(StorageCleaningTest, aFolderInUseStays) {
    scanAndOpenReview();
    const ChildProcess shell("/bin/sleep", {"sleep", "60"}, home.path(".codex/worktrees/shop/web"));
    press("confirmReview");
    press("moveToTrash");
    settle();
    EXPECT_TRUE(fs::exists(home.path(".codex/worktrees/shop/node_modules/a/file")));
    EXPECT_TRUE(store->message().startsWith("0 moved; 2 skipped. ")) << store->message().toStdString();
    EXPECT_EQ(credited, (std::vector<std::pair<std::size_t, std::uint64_t>>{{0, 0}}));
    EXPECT_EQ(called("Show in Trash"), nullptr);
}

} // namespace
} // namespace varnet
