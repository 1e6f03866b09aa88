#include "tests/VarnetApp/UtilityViews/UtilityStage.h"

namespace varnet::test {

namespace {

Finding finding(const std::string& id, const std::string& title) {
    Finding one;
    one.id = id;
    one.title = title;
    one.groupID = "app:quill";
    return one;
}

} // namespace

class PanelTests : public UtilityStage {
protected:
    void SetUp() override {
        UtilityStage::SetUp();
        fakes.probes.processes.clear();
        for (int i = 0; i < 4; ++i) {
            FakeProcess& process = fakes.probes.processes[100 + i];
            process.start = 1'700'000'100'000'000;
            process.name = names[i];
            process.path = "/usr/bin/" + process.name;
        }
        actions = {.quit = [this] { ++quits; }, .closePanel = [this] { ++closings; }};
        load = {40, 30, 20, 10};
    }

    /// Lets the machine work under the load for a while, in passes of two seconds.
    void work(int seconds) {
        for (int second = 0; second < seconds; second += 2) {
            for (auto& [pid, process] : fakes.probes.processes)
                *process.cpu += static_cast<std::uint64_t>(load[static_cast<std::size_t>(pid - 100)] * 2e7);
            fakes.queue.advance(2);
        }
    }

    /// The groups that the panel names, from the top.
    std::string rows() const {
        std::map<double, QString> placed;
        collect(*view().contentItem(), placed);
        QStringList shown;
        for (const auto& [y, name] : placed)
            shown.append(name);
        return shown.join(' ').toStdString();
    }

    static void collect(const QQuickItem& item, std::map<double, QString>& placed) {
        const QString help = item.property("inspectLabel").toString();
        if (!help.isEmpty()) placed[item.mapToScene({}).y()] = help.section(' ', 1, 1);
        for (const QQuickItem* const child : item.childItems())
            collect(*child, placed);
    }

    static constexpr const char* names[] = {"alder", "birch", "cedar", "dogwood"};
    std::vector<double> load; ///< percent of one core
    int quits = 0;
    int closings = 0;
};

TEST_F(PanelTests, rowsKeepTheirPlacesUnderThePointer) {
    open("MenuPanel", {340, 500});
    EXPECT_EQ(rows(), "");
    store().start();
    work(60);
    view().grabWindow(); // new rows find their places
    EXPECT_EQ(rows(), "alder birch cedar") << "opened before the first measurement";
    open("MenuPanel", {340, 500});
    EXPECT_EQ(rows(), "alder birch cedar");
    load = {1, 2, 30, 90};
    work(60);
    ASSERT_EQ(store().snapshot().groups.front().name, "dogwood");
    EXPECT_EQ(rows(), "alder birch cedar");
    fakes.probes.processes.erase(101);
    work(4);
    EXPECT_EQ(rows(), "alder cedar");
    open("MenuPanel", {340, 500});
    EXPECT_EQ(rows(), "dogwood cedar alder") << "the next opening begins afresh";
}

TEST_F(PanelTests, opensWhatItNames) {
    auto snapshot = std::make_shared<MonitorSnapshot>();
    snapshot->date = fakes.clock.now();
    snapshot->groups.emplace_back();
    snapshot->groups.back().id = "project:/srv/storefront";
    snapshot->groups.back().name = "storefront";
    snapshot->groups.back().kind = GroupKind::project;
    snapshot->findings.push_back(finding("cpu:app:quill:7", "Quill is working overtime"));
    fakes.preview = snapshot;
    renew();
    int opened = 0;
    int settings = 0;
    store().openMain = [&] { ++opened; };
    store().openSettings = [&] { ++settings; };
    open("MenuPanel", {340, 500});

    clickOn(knownItem(QAccessible::Button, "Quill is working overtime"));
    EXPECT_EQ(store().selectedGroup(), "app:quill");
    EXPECT_EQ(opened, 1);
    focus(knownItem(QAccessible::Button, "storefront — —"));
    key(Qt::Key_Return);
    EXPECT_EQ(store().selectedGroup(), "project:/srv/storefront");
    EXPECT_EQ(store().page(), Page::projects);
    EXPECT_EQ(opened, 2);
    clickOn(knownItem(QAccessible::Button, "Share report"));
    EXPECT_TRUE(store().showRoast());
    EXPECT_EQ(opened, 3);

    const auto choose = [this](const char* row) {
        clickOn(item("more"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return object("moreMenu")->property("opened").toBool(); }));
        EXPECT_GE(item(row)->mapToScene({}).y(), 0) << "the menu stays in the panel";
        clickOn(item(row));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !object("moreMenu")->property("visible").toBool(); }));
    };
    choose("openOverview");
    EXPECT_EQ(store().page(), Page::overview);
    EXPECT_EQ(opened, 4);
    choose("openSettings");
    EXPECT_EQ(settings, 1);
    choose("quit");
    EXPECT_EQ(quits, 1);
}

TEST_F(PanelTests, escapeClosesTheMenuFirstAndThenThePanel) {
    auto snapshot = std::make_shared<MonitorSnapshot>();
    snapshot->findings.push_back(finding("cpu:app:quill:7", "Quill is working overtime"));
    fakes.preview = snapshot;
    renew();
    open("MenuPanel", {340, 500});
    clickOn(item("more"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return object("moreMenu")->property("opened").toBool(); }));
    key(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !object("moreMenu")->property("visible").toBool(); }));
    EXPECT_EQ(closings, 0);
    focus(knownItem(QAccessible::Button, "Quill is working overtime"));
    key(Qt::Key_Escape);
    EXPECT_EQ(closings, 1);
}

TEST_F(PanelTests, theUpdateIsOfferedOnceThereIsOne) {
    int settings = 0;
    store().openSettings = [&] { ++settings; };
    open("MenuPanel", {340, 560});
    EXPECT_FALSE(item("update")->isVisible());
    updates.handlers.didFindValidUpdate("1.4.0");
    clickOn(knownItem(QAccessible::Button, "Version 1.4.0 available"));
    EXPECT_EQ(updates.openings, 1);
    clickOn(item("more"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return object("moreMenu")->property("opened").toBool(); }));
    clickOn(item("checkForUpdates"));
    EXPECT_EQ(updates.checks, 1);
    EXPECT_EQ(settings, 2) << "where the answers are seen";
}

TEST_F(PanelTests, growsToItsLimitAndScrollsFromThere) {
    auto snapshot = std::make_shared<MonitorSnapshot>();
    snapshot->date = fakes.clock.now();
    fakes.preview = snapshot;
    renew();
    open("MenuPanel", {340, 640});
    const double gathering = item("view")->implicitHeight();
    EXPECT_LT(gathering, 400);
    EXPECT_NE(known(QAccessible::StaticText, "Finding your apps and processes…"), nullptr);

    auto busy = std::make_shared<MonitorSnapshot>(*snapshot);
    for (int i = 0; i < 30; ++i)
        busy->findings.push_back(finding("cpu:" + std::to_string(i), "finding " + std::to_string(i)));
    fakes.preview = busy;
    renew();
    open("MenuPanel", {340, 640});
    EXPECT_EQ(item("view")->implicitHeight(), 640);
    focus(knownItem(QAccessible::Button, "finding 29"));
    const QRectF place = view().activeFocusItem()->mapRectToScene({0, 0, 1, 36});
    const double foot = item("share")->mapToScene({}).y();
    EXPECT_LT(place.bottom(), foot) << "the row that has the focus is in view";
    EXPECT_GT(place.top(), 100);
}

} // namespace varnet::test
