// Stopping real children of the test by clicks in a real window. Only the clock that waits is a fake.

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Components/ViewContext.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/MainViews/ActivityListModel.h"
#include "VarnetApp/Platform/ApplicationQuitting.h"
#include "probes/SystemProbes.h"
#include "tests/VarnetApp/MainViews/WindowStage.h"
#include "tests/fakes/ChildProcess.h"
#include "tests/fakes/FakeQuitting.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QTest>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <thread>

namespace varnet {
namespace {

namespace fs = std::filesystem;

/// Says when it stands. "listen" opens a port, "stubborn" does not go when asked, "worker" starts another.
constexpr const char* script = R"(
import os, signal, socket, sys, time
if 'listen' in sys.argv:
    server = socket.create_server(('127.0.0.1', 0))
if 'worker' in sys.argv:
    if os.fork() == 0:
        time.sleep(60)
        os._exit(0)
if 'stubborn' in sys.argv:
    signal.signal(signal.SIGTERM, signal.SIG_IGN)
open('ready-' + sys.argv[-1], 'w').close()
while True:
    time.sleep(60)
)";

class LiveStopWindowTests : public WindowStage {
protected:
    LiveStopWindowTests() {
        folder_.write("shop/package.json", "{}");
        fs::create_directories(folder_.path() / "plain");
        for (const char* const place : {"shop", "plain"})
            folder_.write(std::string(place) + "/run.py", script);
        store_.settings().setHasOnboarded(true);
    }
    ~LiveStopWindowTests() override { view.reset(); }

    /// A child in a folder, standing.
    std::unique_ptr<ChildProcess> start(const std::string& place, std::vector<std::string> manners,
                                        const std::string& program = "/usr/bin/python3") {
        std::vector<std::string> arguments{"python3", "run.py"};
        arguments.insert(arguments.end(), manners.begin(), manners.end());
        const std::string name = std::to_string(++started_);
        arguments.push_back(name);
        auto child = std::make_unique<ChildProcess>(program, arguments, folder_.path() / place);
        const fs::path ready = folder_.path() / place / ("ready-" + name);
        for (int tries = 0; tries < 500 && !fs::exists(ready); ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return child;
    }

    /// @param search narrows the list to what is in sight on a machine with much else
    void open(Page page, const char* search = "") {
        store_.start();
        queue_.advance(3);
        store_.setPage(page);
        store_.setSearch(search);
        showWindow(context_);
    }

    /// Turns the clock until something has come, with a real moment for signals to act before each step.
    bool await(const std::function<bool()>& come, double seconds) {
        for (double waited = 0; waited <= seconds && !come(); waited += 0.25) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            queue_.advance(0.25);
            QCoreApplication::processEvents();
        }
        return come();
    }

    bool lives(pid_t pid) { return probes_.identity(pid).has_value(); }

    TemporaryFolder folder_;
    SystemProbes probes_;
    // It runs faster than the children live, so it starts a little behind them.
    FakeClock clock_{SystemClock().now() - 60};
    HandQueue queue_{clock_};
    AppLocalization localization_{nullptr};
    FakeCatalog catalog_;
    std::unique_ptr<platform::ApplicationQuitting> quitting_ = platform::makeApplicationQuitting(catalog_);
    VarnetStore store_{{.probes = probes_,
                        .clock = clock_,
                        .engineQueue = queue_,
                        .mainQueue = queue_,
                        .localization = localization_,
                        .catalog = &catalog_,
                        .quitting = quitting_.get(),
                        .storage = folder_.path("state"),
                        .preview = nullptr,
                        .collaborators = {.visibleUI = [] { return true; }}}};
    ViewContext context_{store_, localization_, clock_, nullptr};
    int started_ = 0;
};

TEST_F(LiveStopWindowTests, aStubbornServerGoesOnlyWhenTheUserInsists) {
    const auto server = start("shop", {"listen", "worker", "stubborn"});
    const auto bystander = start("shop", {});
    open(Page::servers, "shop");
    click(partOf(rowOf(server->pid()), "Review this server"));
    ASSERT_NE(
        called("Stops only the processes below. Related work may be interrupted. Your IDE, terminal and "
               "other projects stay open."),
        nullptr);
    EXPECT_NE(called("python3 PID " + QString::number(server->pid())), nullptr);
    EXPECT_EQ(view->activeFocusItem(), item("cancel")) << "Enter by mistake stops nothing";

    clickOn("Quit");
    EXPECT_NE(called("Waiting for confirmed exits (up to 10 seconds)…"), nullptr);
    EXPECT_FALSE(item("cancel")->isEnabled());
    key(Qt::Key_Escape);
    EXPECT_NE(item("cancel"), nullptr) << "what is under way stays in sight";
    ASSERT_TRUE(await([&] { return called("Here’s what happened.") != nullptr; }, 12));
    EXPECT_NE(called("python3 Still running"), nullptr);
    EXPECT_NE(called("python3 Stopped"), nullptr) << "its worker went";
    EXPECT_EQ(called("Quit"), nullptr);
    EXPECT_TRUE(lives(server->pid()));

    clickOn("Force Quit");
    EXPECT_NE(called("Force quit sent. Confirming exits…"), nullptr);
    ASSERT_TRUE(await([&] { return called("Here’s what happened.") != nullptr; }, 4));
    EXPECT_EQ(called("python3 Still running"), nullptr);
    EXPECT_EQ(called("Force Quit"), nullptr);
    EXPECT_FALSE(lives(server->pid()));
    EXPECT_TRUE(lives(bystander->pid()));
    clickOn("Done");
    EXPECT_TRUE(isGone("cancel"));
    EXPECT_TRUE(store_.actionMessage().endsWith(" has left the building."));
    EXPECT_TRUE(
        await([&] { return find<ActivityListModel>()->indexOf(QString()) < 0 && !rowOf(server->pid()); }, 12))
        << "and the list";
    ASSERT_EQ(store_.stoppedServices().size(), 1U);

    const auto again = start("shop", {"listen"});
    EXPECT_TRUE(await(
        [&] {
            const auto& findings = store_.snapshot().findings;
            return !findings.empty() && findings.front().kind == FindingKind::restarted;
        },
        20))
        << "a parent tool brought it back";
}

TEST_F(LiveStopWindowTests, aBatchStopsSharedWorkersOnce) {
    // A name that nothing else on the machine has: their rows are in sight once it is sought.
    const fs::path program = folder_.path() / "batchling";
    fs::create_symlink("/usr/bin/python3", program);
    const auto parent = start("plain", {"worker"}, program);
    const auto lone = start("plain", {}, program);
    open(Page::sources, "batchling");
    // The worker is a row of its own, and the parent's plan holds it as well.
    pid_t worker = 0;
    for (const SampleRef& process : store_.snapshot().processes)
        if (process->parentPID == parent->pid()) worker = process->id.pid;
    ASSERT_NE(worker, 0);
    for (const pid_t pid : {parent->pid(), worker, lone->pid()})
        click(partOf(rowOf(pid), "Select "));
    clickOn("Stop 3 selected");
    ASSERT_NE(called("Only the items listed below are included. Shared workers appear once."), nullptr);
    EXPECT_EQ(store_.stopping().batchStopPlan()->targets().size(), 3U);

    clickOn("Quit selected");
    EXPECT_NE(called("Closing the selected items…"), nullptr);
    ASSERT_TRUE(await([&] { return item("quitSelected") == nullptr; }, 12));
    for (const pid_t pid : {parent->pid(), worker, lone->pid()})
        EXPECT_FALSE(lives(pid)) << pid;
    clickOn("Done");
    ASSERT_TRUE(await([&] { return find<ActivityListModel>()->selection()->count() == 0; }, 6))
        << "nothing that has left stays ticked";
}

TEST_F(LiveStopWindowTests, aTargetThatGoesWhileTheSheetIsOpenIsToldAsGone) {
    const auto server = start("shop", {"listen"});
    open(Page::servers, "shop");
    click(partOf(rowOf(server->pid()), "Review this server"));
    server->end(SIGKILL);
    clickOn("Quit");
    ASSERT_TRUE(await([&] { return called("Here’s what happened.") != nullptr; }, 3));
    EXPECT_NE(called("python3 Already stopped"), nullptr);
}

TEST_F(LiveStopWindowTests, anApplicationIsQuitAfterTheQuestionIfItIsStillTheSame) {
    const auto application = start("plain", {});
    const auto other = start("plain", {});
    const auto asApplication = [&](pid_t pid, const std::string& name) {
        catalog_.running.push_back(
            {"/opt/" + name + ".desktop", name, name, pid, probes_.identity(pid)->start});
    };
    asApplication(application->pid(), "Painter");
    asApplication(other->pid(), "Planner");
    open(Page::apps);
    store_.setSearch("Planner");
    click(partOf(item("app:/opt/Planner.desktop"), "Review Quit or Force Quit for Planner"));
    ASSERT_NE(item("dialogQuit"), nullptr);
    key(Qt::Key_Escape);
    EXPECT_TRUE(isGone("dialogQuit"));

    click(partOf(item("app:/opt/Planner.desktop"), "Review Quit or Force Quit for Planner"));
    other->end(SIGKILL);
    click(item("dialogQuit"));
    EXPECT_EQ(store_.actionMessage(),
              "The application changed while this dialog was open. Please inspect it again.");
    EXPECT_TRUE(isGone("dialogQuit"));

    store_.setSearch("Painter");
    click(partOf(item("app:/opt/Painter.desktop"), "Review Quit or Force Quit for Painter"));
    click(item("dialogQuit"));
    EXPECT_TRUE(await([&] { return store_.actionMessage() == "Painter has left the building."; }, 3));
    EXPECT_FALSE(lives(application->pid()));
}

} // namespace
} // namespace varnet
