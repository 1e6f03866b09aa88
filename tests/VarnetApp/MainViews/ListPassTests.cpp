// Lists while passes go by, on a pretended machine.

#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/MainViews/GroupListModel.h"
#include "tests/VarnetApp/AppStore/StoppingFixture.h"
#include "tests/VarnetApp/MainViews/WindowStage.h"

#include <QTest>

#include <algorithm>

namespace varnet {

class ListPassTests : public WindowStage {
protected:
    ListPassTests() {
        for (int i = 0; i < 60; ++i)
            machine.add(1000 + i, "task-" + std::to_string(i), 1);
        pass();
        machine.store->settings().setHasOnboarded(true);
        machine.store->setPage(Page::sources);
        showWindow(context);
    }
    ~ListPassTests() override { view.reset(); }

    void pass() {
        machine.queue.advance(12); // new processes get their names and arguments
        QCoreApplication::processEvents();
    }
    GroupListModel& model() { return *find<GroupListModel>(); }
    QString keyOf(const std::string& name) { return QString::fromStdString(machine.group(name).id); }
    double scrolled() {
        QQuickItem* const list = item("list");
        return list->property("contentY").toDouble() - list->property("originY").toDouble() +
               list->property("topMargin").toDouble();
    }
    /// Lets the processes use CPU so that the list turns round: the last of them the most.
    void turnRound(int round) {
        for (int i = 0; i < 60; ++i)
            *machine.probes.processes[1000 + i].cpu +=
                static_cast<std::uint64_t>((round % 2 == 0 ? i : 60 - i)) * 100'000'000;
        pass();
    }

    PretendedMachine machine;
    ViewContext context{*machine.store, machine.localization, machine.clock, nullptr};
};

TEST_F(ListPassTests, whatIsTickedFocusedAndOpenStaysWithItsRow) {
    const QString editor = keyOf("Editor");
    click(item(editor));
    key(Qt::Key_Space);
    ASSERT_EQ(model().selection()->count(), 1);
    for (int round = 0; round < 4; ++round) {
        turnRound(round);
        item("list")->setProperty("contentY", 0);
        EXPECT_EQ(item("list")->property("currentIndex").toInt(), model().indexOf(editor)) << round;
    }
    EXPECT_EQ(machine.store->selectedGroup(), editor.toStdString());
    EXPECT_EQ(model().selection()->count(), 1);

    machine.probes.processes.erase(PretendedMachine::editor);
    machine.catalog.running.erase(machine.catalog.running.begin());
    pass();
    EXPECT_EQ(model().selection()->count(), 0) << "it has left, and its requests with it";
    EXPECT_NE(called("This process has moved on It may have exited since you opened the detail."), nullptr);
}

TEST_F(ListPassTests, theViewNeitherCreepsAtTheTopNorJumpsBelow) {
    for (int round = 0; round < 6; ++round) {
        turnRound(round);
        EXPECT_EQ(scrolled(), 0) << "round " << round;
        machine.add(2000 + round, "newcomer-" + std::to_string(round), 1);
    }
    for (int i = 0; i < 4; ++i)
        pass(); // nobody has used any CPU for half a minute: the order rests
    QQuickItem* const list = item("list");
    list->setProperty("contentY", list->property("originY").toDouble() + 700);
    QTest::qWait(50);
    const QString seen = model().keyAt(18);
    ASSERT_NE(item(seen), nullptr);
    const double before = item(seen)->mapToScene({0, 0}).y();
    machine.add(3000, "newcomer", 1);
    pass();
    ASSERT_NE(item(seen), nullptr);
    EXPECT_EQ(item(seen)->mapToScene({0, 0}).y(), before) << "a newcomer far below moves nothing";
}

TEST_F(ListPassTests, aPassThatChangesNothingPaintsNothing) {
    pass();
    QTest::qWait(50);
    int frames = 0;
    QObject::connect(view.get(), &QQuickWindow::afterRendering, view.get(), [&] { ++frames; });
    int published = 0;
    QObject::connect(machine.store.get(), &VarnetStore::snapshotChanged, view.get(), [&] { ++published; });
    machine.queue.advance(5);
    QTest::qWait(100);
    EXPECT_GE(published, 2);
    EXPECT_EQ(frames, 0);
    *machine.probes.processes[1001].cpu += 500'000'000;
    machine.queue.advance(2);
    QTest::qWait(100);
    EXPECT_GT(frames, 0) << "a figure that changed is shown";
}

} // namespace varnet
