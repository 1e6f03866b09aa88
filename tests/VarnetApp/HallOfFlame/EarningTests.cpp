// Badges earned by clicks in the real window, on a pretended machine whose time is turned by hand.

#include "VarnetApp/Application/CollectionWatch.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/FlameCollectionStore/CollectionFile.h"
#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "tests/VarnetApp/AppStore/StoppingFixture.h"
#include "tests/VarnetApp/MainViews/WindowStage.h"
#include "tests/fakes/InlineQueue.h"

#include <QCoreApplication>

namespace varnet {

class EarningTests : public WindowStage {
protected:
    ~EarningTests() override { view.reset(); }

    void openWindow(Page page) {
        machine.open(withCollection(collection, {.visibleUI = [] { return true; }}));
        machine.queue.advance(9); // new processes get their arguments
        context = std::make_unique<ViewContext>(ViewContext{.store = *machine.store,
                                                            .localization = machine.localization,
                                                            .clock = machine.clock,
                                                            .collection = &collection});
        machine.store->settings().setHasOnboarded(true);
        machine.store->setPage(page);
        showWindow(*context);
    }
    FlameArchive onDisk() const { return CollectionFile::read(file).value(); }

    PretendedMachine machine;
    const std::filesystem::path file = machine.folder.path() / "state" / CollectionFile::name;
    InlineQueue writer;
    FlameCollectionStore collection{
        {.clock = machine.clock, .mainQueue = machine.queue, .writer = writer, .file = file}};
    std::unique_ptr<ViewContext> context;
};

TEST_F(EarningTests, inspectingThreeKindsEarnsTheDetectivesBadge) {
    machine.add(400, "logger", 1).path = "/usr/sbin/logger";
    openWindow(Page::sources);
    const QString announced = "Private eye · Everyone has a file now.";
    const auto inspect = [&](const char* name) {
        click(item(QString::fromStdString(machine.group(name).id)));
    };
    for (const char* const name : {"Editor", "shop", "Mailer"})
        inspect(name);
    EXPECT_EQ(called(announced), nullptr) << "twice the same kind is no third one";
    inspect("logger");
    ASSERT_NE(called(announced), nullptr);
    EXPECT_TRUE(onDisk().unlocked.contains("detective")) << "a deed is saved at once";

    machine.store->setPage(Page::overview);
    machine.queue.advance(7.9);
    EXPECT_NE(called(announced), nullptr) << "over any page";
    machine.queue.advance(0.2);
    EXPECT_EQ(called(announced), nullptr);
    EXPECT_NE(called("Hall of Flame 1"), nullptr);
}

TEST_F(EarningTests, aConfirmedStopOfAForgottenServerEarnsItsBadgeOnce) {
    FakeProcess& agent = machine.add(500, "claude", 1);
    agent.arguments = "claude";
    agent.cwd = machine.folder.path("shop");
    FakeProcess& forgotten = machine.add(501, "node", 500);
    forgotten.cwd = machine.folder.path("shop");
    forgotten.ports = {3001};
    machine.queue.advance(12);
    machine.probes.processes.erase(500);
    machine.probes.processes[501].parent = 1;
    machine.queue.advance(1'900);
    openWindow(Page::servers);
    click(partOf(rowOf(501), "Review this server"));
    ASSERT_TRUE(machine.stopping().stopPlan());
    const StopPlan plan = *machine.stopping().stopPlan();
    EXPECT_FALSE(collection.archive().unlocked.contains("ghost")) << "looking at it stops nothing";
    clickOn("Quit");
    machine.queue.advance(1);
    QCoreApplication::processEvents();
    EXPECT_NE(called("Ghostbuster · One less ghost in the machine."), nullptr);
    EXPECT_EQ(onDisk().metric("ghosts"), 1);
    EXPECT_TRUE(onDisk().unlocked.contains("ancient")) << "it had been running for days";

    std::vector<StopResult> results;
    for (const StopTarget& target : plan.targets)
        results.push_back({target, StopOutcome::stopped, ""});
    collection.stopped(plan, results, true);
    EXPECT_EQ(onDisk().metric("ghosts"), 1) << "told twice, it counts once";
    EXPECT_EQ(onDisk().days.back().stops, 1);
}

} // namespace varnet
