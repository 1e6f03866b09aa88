#include "tests/VarnetApp/MainViews/MainWindowStage.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

namespace varnet {

using MainWindowTests = MainWindowStage;

TEST_F(MainWindowTests, digitsOpenPagesAfresh) {
    struct Row {
        Qt::Key key;
        Page page;
    };
    open(PreparedMachine::busy());
    for (const Row& row :
         {Row{Qt::Key_2, Page::apps}, Row{Qt::Key_3, Page::projects}, Row{Qt::Key_4, Page::servers},
          Row{Qt::Key_5, Page::storage}, Row{Qt::Key_6, Page::hall}, Row{Qt::Key_7, Page::sources},
          Row{Qt::Key_8, Page::battery}, Row{Qt::Key_1, Page::overview}}) {
        store->setSearch("vite");
        store->setAgentFilter("Codex");
        store->select("group", "service");
        key(row.key, Qt::ControlModifier);
        EXPECT_EQ(store->page(), row.page);
        EXPECT_EQ(store->search(), "");
        EXPECT_EQ(store->agentFilter(), "All agents");
        EXPECT_EQ(store->selectedGroup(), std::nullopt);
        EXPECT_EQ(store->selectedService(), std::nullopt);
    }
}

TEST_F(MainWindowTests, commandsReachTheStore) {
    open(PreparedMachine::busy());
    bool settings = false;
    store->openSettings = [&] { settings = true; };

    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(store->page(), Page::sources);
    EXPECT_EQ(store->searchFocusRequest(), 1);
    store->setPage(Page::servers);
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(store->page(), Page::servers) << "a page with a field of its own keeps the search";
    EXPECT_EQ(store->searchFocusRequest(), 2);

    key(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(store->page(), Page::overview);
    key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(store->showRoast());
    key(Qt::Key_Escape);
    EXPECT_FALSE(store->showRoast());
    key(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(settings);
    key(Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(view->isVisible());
}

TEST_F(MainWindowTests, theWelcomeIsNotLeftByKeys) {
    open(PreparedMachine::gathering());
    store->setPreviewOnboarded(false);
    key(Qt::Key_4, Qt::ControlModifier);
    key(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(store->page(), Page::overview);
    EXPECT_EQ(store->searchFocusRequest(), 0);
}

TEST_F(MainWindowTests, sidebarNamesPagesWithTheirCounts) {
    open(PreparedMachine::busy());
    const auto count = [&](Page page) { return QString::number(*store->itemCount(page)); };
    for (const QString& name : {"Overview " + count(Page::overview), "Apps " + count(Page::apps),
                                "Projects " + count(Page::projects), QString("Servers 6"), QString("Storage"),
                                QString("Hall of Flame 0"), "All sources " + count(Page::sources),
                                QString("Battery"), QString("Share report"), QString("Settings")})
        EXPECT_NE(called(name), nullptr) << name.toStdString();

    clickOn("Servers 6");
    EXPECT_EQ(store->page(), Page::servers);
    const auto selected = [&](const QString& name) {
        return QAccessible::queryAccessibleInterface(called(name))->state().selected;
    };
    EXPECT_TRUE(selected("Servers 6"));
    EXPECT_FALSE(selected("Storage"));
    clickOn("Share report");
    EXPECT_TRUE(store->showRoast());
}

TEST_F(MainWindowTests, countsVanishWithTheReadings) {
    open(PreparedMachine::failing());
    for (const char* const name : {"Overview", "Apps", "Servers", "All sources"})
        EXPECT_NE(called(name), nullptr) << name;
}

TEST_F(MainWindowTests, theRailKeepsEveryNameAndPage) {
    open(PreparedMachine::busy(), {760, 560});
    clickOn("Servers 6");
    EXPECT_EQ(store->page(), Page::servers);
    EXPECT_NE(called("Share report"), nullptr) << "its words are gone from the button, not its name";
}

TEST_F(MainWindowTests, arrowsWalkTheSidebar) {
    open(PreparedMachine::busy());
    called("Servers 6")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    EXPECT_EQ(view->activeFocusItem(), called("Hall of Flame 0"));
    key(Qt::Key_Up);
    key(Qt::Key_Return);
    EXPECT_EQ(store->page(), Page::storage);
}

TEST_F(MainWindowTests, aReportIsShownUntilItIsClosed) {
    open(PreparedMachine::busy());
    store->setActionMessage("Django has left the building.");
    EXPECT_TRUE(store->actionSucceeded());
    ASSERT_NE(called("Django has left the building."), nullptr);
    clickOn("Close");
    EXPECT_EQ(store->actionMessage(), "");
    EXPECT_EQ(called("Close"), nullptr);
    store->setActionMessage(
        "Quill Editor is still running. Check its windows for a save or confirmation dialog.");
    EXPECT_FALSE(store->actionSucceeded());
}

} // namespace varnet
