#include "VarnetApp/MainViews/TimelineModel.h"
#include "tests/VarnetApp/MainViews/MainWindowStage.h"

#include <QSignalSpy>

namespace varnet {

using OverviewTests = MainWindowStage;

namespace {

QString roleOf(QAbstractItemModel* list, int row, const char* role) {
    return list->data(list->index(row, 0), list->roleNames().key(role)).toString();
}

} // namespace

TEST_F(OverviewTests, firstTwoFindingsThenAllOnRequest) {
    struct Row {
        std::size_t findings;
        int first;
        const char* toggle;
        const char* notice;
    };
    for (const Row& row : {Row{0, 0, "", "Nothing needs your attention."}, Row{1, 1, "", ""},
                           Row{2, 2, "", ""}, Row{3, 2, "View all 3", ""}}) {
        open(withFindings(row.findings));
        auto& model = *find<OverviewModel>();
        EXPECT_EQ(model.findings()->rowCount(), row.first) << row.findings;
        EXPECT_EQ(model.property("toggle").toString(), row.toggle) << row.findings;
        EXPECT_EQ(called(row.notice + QString(" Your Mac gets a pass. For now.")) != nullptr,
                  row.findings == 0);
    }
    auto& model = *find<OverviewModel>();
    clickOn("View all 3");
    EXPECT_EQ(model.findings()->rowCount(), 3);
    clickOn("Show fewer");
    EXPECT_EQ(model.findings()->rowCount(), 2);
}

TEST_F(OverviewTests, anIgnoredFindingLeavesAtOnceAndTheNextMovesUp) {
    open(withFindings(3));
    auto& model = *find<OverviewModel>();
    QSignalSpy resets(model.findings(), &QAbstractItemModel::modelReset);
    const QString second = roleOf(model.findings(), 1, "title");
    clickOn("Ignore");
    EXPECT_EQ(store->snapshot().findings.size(), 2u);
    EXPECT_EQ(model.findings()->rowCount(), 2);
    EXPECT_EQ(roleOf(model.findings(), 0, "title"), second);
    EXPECT_EQ(model.property("toggle").toString(), "");
    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(store->page(), Page::overview) << "the row itself was not pressed";
    queue.run();
    EXPECT_EQ(store->ignored().size(), 1u);
}

TEST_F(OverviewTests, rowsOpenWhatTheyTellOf) {
    open(PreparedMachine::busy());
    const ApplicationGroup& busiest = store->snapshot().groups.front();
    clickOn(QString::fromStdString(busiest.name) + " 9.8%");
    EXPECT_EQ(store->selectedGroup(), busiest.id);
    EXPECT_EQ(store->page(), Page::apps);

    store->navigate("overview");
    const Finding& duplicate = store->snapshot().findings.front();
    clickOn(QString::fromStdString(duplicate.title + " " + duplicate.explanation));
    EXPECT_EQ(store->page(), Page::servers);
    EXPECT_TRUE(store->selectedService().has_value());

    store->navigate("overview");
    clickOn("Servers 6"); // the sidebar's row, first in the window
    store->navigate("overview");
    clickOn("Process memory 15.1 GB");
    EXPECT_EQ(store->page(), Page::sources);
    EXPECT_EQ(store->sort(), SortOrder::memory);
}

TEST_F(OverviewTests, nothingIsAssumedWithoutReadings) {
    struct Row {
        const char* name;
        Snapshot (*snapshot)();
        const char* contributors;
    };
    auto halted = [] {
        // What a failed pass publishes: the last good lists, and no readings.
        auto snapshot = std::make_shared<MonitorSnapshot>(*PreparedMachine::calm());
        snapshot->error = PreparedMachine::failing()->error;
        snapshot->fans.availability = FanAvailability::stale;
        snapshot->systemMemory = {};
        return Snapshot(snapshot);
    };
    for (const Row& row :
         {Row{"before the first measurement", PreparedMachine::gathering,
              "Taking attendance Your running apps will appear here."},
          Row{"failed from the start", PreparedMachine::failing,
              "Measurements unavailable We’ll retry automatically. No readings are being assumed."},
          Row{"failed later", halted,
              "Measurements unavailable We’ll retry automatically. No readings are being assumed."}}) {
        open(row.snapshot());
        auto& model = *find<OverviewModel>();
        EXPECT_EQ(model.property("cpu").toString(), "—") << row.name;
        // The battery is read by itself, and goes on when processes cannot be.
        const char* const battery = store->snapshot().battery ? "82%" : "—";
        for (int card = 0; card < 4; ++card)
            EXPECT_EQ(roleOf(model.metrics(), card, "figure"), card == 2 ? battery : "—")
                << row.name << " " << card;
        EXPECT_EQ(model.contributors()->rowCount(), 0) << row.name;
        EXPECT_NE(called(row.contributors), nullptr) << row.name;
        EXPECT_NE(called("Still gathering evidence. Waiting for enough data to check."), nullptr) << row.name;
    }
}

TEST_F(OverviewTests, theTimelineWaitsForAHandfulOfPoints) {
    const auto history = [](std::size_t points) {
        auto snapshot = std::make_shared<MonitorSnapshot>(*PreparedMachine::busy());
        snapshot->history.erase(snapshot->history.begin(),
                                snapshot->history.end() - static_cast<std::ptrdiff_t>(points));
        return snapshot;
    };
    open(history(4));
    EXPECT_FALSE(find<TimelineModel>()->ready());
    open(history(5));
    auto& timeline = *find<TimelineModel>();
    EXPECT_TRUE(timeline.ready());
    EXPECT_EQ(timeline.property("labels").toStringList().back(), "43% · 14:28:06");
    EXPECT_EQ(timeline.property("to").toDouble() - timeline.property("from").toDouble(), 900);
}

TEST_F(OverviewTests, theRulesOpenAndCloseByKeyboard) {
    open(PreparedMachine::busy());
    called("What appears in Needs attention?")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Return);
    EXPECT_NE(called("What gets flagged?"), nullptr);
    key(Qt::Key_Escape);
    EXPECT_EQ(called("What gets flagged?"), nullptr);
    EXPECT_EQ(view->activeFocusItem(), called("What appears in Needs attention?"));
}

TEST_F(OverviewTests, whatTheKeyboardReachesComesIntoView) {
    open(withFindings(3), {720, 520});
    for (int tabs = 0; tabs < 40; ++tabs) {
        key(Qt::Key_Tab);
        const QQuickItem* const item = view->activeFocusItem();
        const double top = item->mapToScene({0, 0}).y();
        EXPECT_GE(top, 0) << tabs << item->metaObject()->className();
        EXPECT_LE(top + item->height(), 520) << tabs << item->metaObject()->className();
    }
}

} // namespace varnet
