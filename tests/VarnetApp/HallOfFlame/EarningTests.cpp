// Badges earned by clicks in the real window, on a pretended machine whose time is turned by hand.

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Application/CollectionWatch.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/FlameCollectionStore/CollectionFile.h"
#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/MainViews/ActivityListModel.h"
#include "probes/fake/FakeProbes.h"
#include "tests/VarnetApp/MainViews/WindowStage.h"
#include "tests/fakes/FakeQuitting.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/InlineQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QCoreApplication>

#include <functional>

namespace varnet {

class EarningTests : public WindowStage {
protected:
    EarningTests() {
        folder.write("shop/package.json", "{}");
        probes.ticks = VNCPUTicks{};
        probes.onSignal = [this](std::int32_t pid, std::int32_t) { probes.processes.erase(pid); };
        store.settings().setHasOnboarded(true);
    }
    ~EarningTests() override { view.reset(); }

    FakeProcess& add(std::int32_t pid, const std::string& name, std::int32_t parent) {
        FakeProcess& process = probes.processes[pid];
        process.parent = parent;
        process.start = static_cast<std::uint64_t>(probes.boot + 100 + pid) * 1'000'000;
        process.name = name;
        process.path = "/usr/bin/" + name;
        process.arguments = name + "\tserver.js";
        return process;
    }
    void addServer(std::int32_t pid, std::int32_t parent) {
        FakeProcess& server = add(pid, "node", parent);
        server.cwd = folder.path("shop");
        server.ports = {3000};
    }

    void openWindow(Page page) {
        store.setPage(page);
        showWindow(context);
    }
    QQuickItem* rowOf(const std::string& name) {
        for (const ApplicationGroup& group : store.snapshot().groups)
            if (group.name == name) return item(QString::fromStdString(group.id));
        return nullptr;
    }
    /// The button of a row whose words begin so.
    static QQuickItem* partOf(QQuickItem* row, const QString& beginning) {
        QQuickItem* found = nullptr;
        const std::function<void(QQuickItem*)> look = [&](QQuickItem* one) {
            if (one->property("label").toString().startsWith(beginning)) found = one;
            for (QQuickItem* const child : one->childItems())
                look(child);
        };
        if (row) look(row);
        return found;
    }
    FlameArchive onDisk() const { return CollectionFile::read(file).value(); }

    TemporaryFolder folder;
    const std::filesystem::path file = folder.path() / "state" / CollectionFile::name;
    FakeClock clock;
    HandQueue queue{clock};
    InlineQueue writer;
    FakeProbes probes;
    FakeCatalog catalog;
    FakeQuitting quitting{probes};
    AppLocalization localization{nullptr};
    FlameCollectionStore collection{{.clock = clock, .mainQueue = queue, .writer = writer, .file = file}};
    VarnetStore store{{.probes = probes,
                       .clock = clock,
                       .engineQueue = queue,
                       .mainQueue = queue,
                       .localization = localization,
                       .catalog = &catalog,
                       .quitting = &quitting,
                       .storage = folder.path("state"),
                       .preview = nullptr,
                       .collaborators = withCollection(collection, {.visibleUI = [] { return true; }})}};
    ViewContext context{store, localization, clock, nullptr, {}, nullptr, &collection};
};

TEST_F(EarningTests, inspectingThreeKindsEarnsTheDetectivesBadge) {
    addServer(100, 1);
    add(300, "Editor", 1).arguments = "Editor";
    catalog.running.push_back(
        {"/usr/share/applications/Editor.desktop", "Editor", "Editor", 300, probes.processes[300].start});
    add(400, "logger", 1).path = "/usr/sbin/logger";
    store.start();
    queue.advance(3);
    openWindow(Page::sources);
    const QString announced = "Private eye · Everyone has a file now.";
    for (const char* const name : {"Editor", "shop", "Editor"})
        click(rowOf(name));
    EXPECT_EQ(called(announced), nullptr) << "twice the same kind is no third one";
    click(rowOf("logger"));
    ASSERT_NE(called(announced), nullptr);
    EXPECT_TRUE(onDisk().unlocked.contains("detective")) << "a deed is saved at once";

    store.setPage(Page::overview);
    queue.advance(7.9);
    EXPECT_NE(called(announced), nullptr) << "over any page";
    queue.advance(0.2);
    EXPECT_EQ(called(announced), nullptr);
    EXPECT_NE(called("Hall of Flame 1"), nullptr);
}

TEST_F(EarningTests, aConfirmedStopOfAForgottenServerEarnsItsBadgeOnce) {
    FakeProcess& agent = add(500, "claude", 1);
    agent.arguments = "claude";
    agent.cwd = folder.path("shop");
    addServer(501, 500);
    store.start();
    queue.advance(12);
    probes.processes.erase(500);
    probes.processes[501].parent = 1;
    queue.advance(1'900);
    openWindow(Page::servers);
    StopPlan plan;
    std::vector<StopResult> results;
    auto* const rows = find<ActivityListModel>();
    click(partOf(item(rows->keyAt(0)), "Review this server"));
    ASSERT_TRUE(store.stopping().stopPlan());
    plan = *store.stopping().stopPlan();
    EXPECT_FALSE(collection.archive().unlocked.contains("ghost")) << "looking at it stops nothing";
    clickOn("Quit");
    queue.advance(1);
    QCoreApplication::processEvents();
    EXPECT_NE(called("Ghostbuster · One less ghost in the machine."), nullptr);
    EXPECT_EQ(onDisk().metric("ghosts"), 1);
    EXPECT_TRUE(onDisk().unlocked.contains("ancient")) << "it had been running for days";

    for (const StopTarget& target : plan.targets)
        results.push_back({target, StopOutcome::stopped, ""});
    collection.stopped(plan, results, true);
    EXPECT_EQ(onDisk().metric("ghosts"), 1) << "told twice, it counts once";
    EXPECT_EQ(onDisk().days.back().stops, 1);
}

} // namespace varnet
