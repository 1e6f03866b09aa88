#include "VarnetApp/MainViews/GroupListModel.h"
#include "VarnetApp/MainViews/ServerListModel.h"
#include "tests/VarnetApp/MainViews/MainWindowStage.h"

#include <QAccessible>
#include <QTest>

#include <algorithm>

namespace varnet {

/// The pages with lists, on prepared data.
class ListPageTests : public MainWindowStage {
protected:
    ActivityListModel& model() const { return *find<ActivityListModel>(); }

    QString keyOf(const std::string& name) const {
        for (const ApplicationGroup& group : store->snapshot().groups)
            if (group.name == name) return QString::fromStdString(group.id);
        return {};
    }
    QQuickItem* row(const std::string& name) const { return item(keyOf(name)); }
    QQuickItem* focused() const { return view->activeFocusItem(); }
    static QString nameOf(QQuickItem* item) {
        return QAccessible::queryAccessibleInterface(item)->text(QAccessible::Name);
    }
    QString rowName(int at) const {
        return QString::fromStdString(store->filteredGroups().at(static_cast<std::size_t>(at))->name);
    }
};

TEST_F(ListPageTests, theKeyboardWalksOpensTicksAndCloses) {
    open(PreparedMachine::busy());
    store->setPage(Page::apps);
    item("list")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    ASSERT_EQ(focused(), item(model().keyAt(2)));
    EXPECT_TRUE(focused()->property("visualFocus").toBool());

    key(Qt::Key_Return);
    EXPECT_EQ(store->selectedGroup(), model().keyAt(2).toStdString());
    ASSERT_NE(called("Close detail"), nullptr);
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), item(model().keyAt(3))) << "the list keeps the keyboard beside the details";
    key(Qt::Key_Space);
    EXPECT_EQ(model().selection()->count(), 1);
    EXPECT_NE(called("Stop 1 selected"), nullptr);
    key(Qt::Key_Escape);
    EXPECT_EQ(store->selectedGroup(), std::nullopt);
    EXPECT_TRUE(isGone("detailClose"));

    key(Qt::Key_End);
    EXPECT_EQ(focused(), item(model().keyAt(model().rows()->rowCount() - 1))) << "and it is in sight";
    key(Qt::Key_Space);
    EXPECT_EQ(model().selection()->count(), 1) << "the last one is not ours to stop";
    key(Qt::Key_Home);
    EXPECT_EQ(focused(), item(model().keyAt(0)));
}

TEST_F(ListPageTests, onlyTheRowInHandIsATabStop) {
    open(PreparedMachine::busy());
    store->setPage(Page::apps);
    item("list")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Down);
    key(Qt::Key_Tab);
    EXPECT_EQ(nameOf(focused()), "Select " + rowName(1) + " to quit or stop it with other selected items");
    key(Qt::Key_Tab);
    EXPECT_EQ(nameOf(focused()), "Review Quit or Force Quit for " + rowName(1));
    key(Qt::Key_Tab);
    EXPECT_FALSE(nameOf(focused()).startsWith("Select " + rowName(2)));
}

TEST_F(ListPageTests, searchAndAgentNarrowAtOnceAndSayWhenNothingIsLeft) {
    open(PreparedMachine::busy());
    store->setPage(Page::apps);
    key(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(view.get(), 'q');
    QTest::keyClick(view.get(), 'u');
    EXPECT_EQ(store->search(), "qu");
    EXPECT_EQ(model().rows()->rowCount(), 1);
    EXPECT_NE(row("Quill Editor"), nullptr);
    key(Qt::Key_Down);
    EXPECT_EQ(focused(), row("Quill Editor"));

    store->setSearch("nothing like it");
    EXPECT_NE(called("No matches Try another search or clear the filters."), nullptr);
    EXPECT_EQ(called("Select all"), nullptr);
    key(Qt::Key_F, Qt::ControlModifier);
    key(Qt::Key_Escape);
    EXPECT_EQ(store->search(), "") << "Escape empties the field first";

    store->setPage(Page::projects);
    EXPECT_EQ(model().agents().front(), "All agents");
    model().chooseAgent(static_cast<int>(model().agents().indexOf("Codex")));
    EXPECT_EQ(model().rows()->rowCount(), 1);
    EXPECT_EQ(model().agents().size(), 5) << "the others can still be chosen";
    store->setAgentFilter("Nobody");
    EXPECT_FALSE(model().hasRows());
    EXPECT_TRUE(model().agents().contains("Nobody")) << "or it could not be cleared";

    store->setPage(Page::servers);
    store->setSearch(":8000");
    EXPECT_EQ(find<ServerListModel>()->rows()->rowCount(), 1);
    store->setSearch("9999");
    EXPECT_NE(called("No matching servers Try a different name, project or port."), nullptr);
}

TEST_F(ListPageTests, theSortedColumnStandsFirst) {
    open(PreparedMachine::busy());
    store->setPage(Page::apps);
    const auto column = [&](const char* role) {
        const auto names = model().rows()->roleNames();
        return model().rows()->index(0, 0).data(names.key(role)).toString();
    };
    EXPECT_EQ(column("primary"), "9.8%");
    clickOn("Memory");
    EXPECT_EQ(store->sort(), SortOrder::memory);
    EXPECT_EQ(column("primary"), "4.6 GB");
    EXPECT_EQ(column("secondary"), "9.8%");
    store->setPage(Page::overview);
    store->setPage(Page::servers);
    EXPECT_EQ(item("primaryHead")->property("text").toString(), "Memory") << "on a page that opens sorted so";
    EXPECT_EQ(item("order")->property("currentIndex").toInt(), 1);
    store->setPage(Page::apps);
    clickOn("Name");
    EXPECT_EQ(store->sort(), SortOrder::name);
    EXPECT_EQ(column("title"), "Boardroom");
    EXPECT_EQ(column("primary"), "3.9%");
}

TEST_F(ListPageTests, selectAllTakesWhatCanBeStoppedAndNothingElse) {
    open(PreparedMachine::busy());
    store->setPage(Page::apps);
    ListSelection& selection = *model().selection();
    clickOn("Select all");
    EXPECT_TRUE(selection.all());
    EXPECT_EQ(selection.count(), 10) << "nine applications and a server of no project; the rest is not ours";
    selection.toggle(keyOf("Boardroom"));
    EXPECT_TRUE(selection.partial());
    clickOn("Select all");
    EXPECT_TRUE(selection.all()) << "in part ticked asks for all";
    clickOn("Select all");
    EXPECT_EQ(selection.count(), 0);

    selection.toggle(keyOf("Boardroom"));
    selection.toggle(keyOf("Huddle Chat"));
    store->setSearch("hud");
    EXPECT_EQ(selection.count(), 1) << "what has left the list is not stopped behind the user's back";
    clickOn("Clear");
    EXPECT_EQ(selection.count(), 0);
    store->setSearch("");
    store->setPage(Page::projects);
    clickOn("Select all");
    clickOn("Stop 4 selected");
    ASSERT_NE(called("Quit selected"), nullptr) << store->actionMessage().toStdString() << selection.count();
    EXPECT_FALSE(called("Quit selected")->isEnabled());
    key(Qt::Key_Escape);
    EXPECT_FALSE(store->stopping().batchStopPlan());
}

TEST_F(ListPageTests, whyARowCannotBeStoppedIsTold) {
    open(PreparedMachine::busy());
    store->setPage(Page::projects);
    const auto reason = [&](const std::string& name) {
        const int at = model().indexOf(keyOf(name));
        return model().rows()->index(at, 0).data(model().rows()->roleNames().key("stopReason")).toString();
    };
    EXPECT_EQ(reason("design-tokens"),
              "No running servers to stop in this project. Editors and AI agents stay open.");
    EXPECT_EQ(reason("api-gateway"), "");
    store->setPage(Page::apps);
    EXPECT_EQ(reason("display-server"), "System process. macOS needs it, so it can’t be stopped here.");
    EXPECT_FALSE(row("display-server")->property("tickable").toBool());
}

TEST_F(ListPageTests, detailsTellOfTheSelectedAndOfWhatHasGone) {
    open(PreparedMachine::busy());
    const auto& services = store->snapshot().services;
    const auto django =
        std::ranges::find_if(services, [](const Service& service) { return service.name() == "Django"; });
    store->setPage(Page::servers);
    click(item(QString::fromStdString(django->id())));
    for (const char* const text : {"Started by Claude Code", "Ports: 8000", "Worktree: main",
                                   "CPU · Whole Mac 0.9%", "Memory 412 MB", "Open in browser", "Stop server"})
        EXPECT_NE(called(text), nullptr) << text;
    store->select(std::nullopt, "gone");
    EXPECT_NE(called("This process has moved on It may have exited since you opened the detail."), nullptr);
    EXPECT_EQ(called("Stop server"), nullptr);
    clickOn("Close detail");
    EXPECT_EQ(store->selectedService(), std::nullopt);

    store->setPage(Page::projects);
    click(row("api-gateway"));
    EXPECT_NE(called("Running servers"), nullptr);
    clickOn("Django :8000");
    EXPECT_EQ(store->page(), Page::servers);
    EXPECT_EQ(store->selectedService(), django->id());
}

TEST_F(ListPageTests, aNarrowWindowLaysTheDetailsOverTheList) {
    open(PreparedMachine::busy(), {720, 520});
    store->setPage(Page::apps);
    click(row("Quill Editor"));
    EXPECT_EQ(item("list"), nullptr);
    EXPECT_EQ(nameOf(focused()), "Close detail");
    key(Qt::Key_Escape);
    EXPECT_NE(item("list"), nullptr);
    EXPECT_EQ(focused(), row("Quill Editor")) << "the keyboard is back where it came from";
}

TEST_F(ListPageTests, failingMeasurementsReplaceTheList) {
    open(PreparedMachine::failing());
    for (const Page page : {Page::sources, Page::apps, Page::projects, Page::servers}) {
        store->setPage(page);
        EXPECT_NE(
            called("Measurements unavailable We’ll retry automatically. No readings are being assumed."),
            nullptr);
        EXPECT_EQ(model().note(), "— · CPU: 30s average, whole Mac");
    }
}

} // namespace varnet
