// Stopping real children of the test on the running kernel. Only the clock that waits is a fake.

#include "VarnetApp/Engine/MonitorEngine.h"
#include "VarnetCore/Findings/StopPlanner.h"
#include "probes/SystemProbes.h"
#include "tests/fakes/ChildProcess.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace varnet {
namespace {

namespace fs = std::filesystem;
using enum StopOutcome;

/// Listens, starts two workers, and says when all stand.
constexpr const char* serverScript = R"(
import os, socket, time
s = socket.create_server(('127.0.0.1', 0))
for _ in range(2):
    if os.fork() == 0:
        time.sleep(60)
        os._exit(0)
open('ready', 'w').close()
time.sleep(60)
)";

class LiveStopTest : public testing::Test {
protected:
    ChildProcess start(const fs::path& program, std::vector<std::string> arguments) const {
        return ChildProcess(program, std::move(arguments), folder_.path());
    }
    /// Whether a child has made its file, in the end.
    bool comes(const char* file) const {
        for (int tries = 0; tries < 1'000 && !fs::exists(folder_.path(file)); ++tries)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        return fs::exists(folder_.path(file));
    }

    std::shared_ptr<const MonitorSnapshot> sample() {
        clock_.advance(2);
        return engine_.sample({}, Thermal::nominal, true);
    }

    /// Turns the queue through ten seconds, with a real moment before each look for signals to act.
    std::vector<StopOutcome> execute(const StopPlan& plan, StopForce force) {
        std::optional<std::vector<StopResult>> results;
        engine_.execute(plan, force, queue_,
                        [&](std::vector<StopResult> told) { results = std::move(told); });
        for (double waited = 0; waited <= 10 && !results; waited += StopExecution::pause) {
            std::this_thread::sleep_for(std::chrono::milliseconds(25));
            queue_.advance(StopExecution::pause);
        }
        std::vector<StopOutcome> outcomes;
        for (const StopResult& result : results.value_or(std::vector<StopResult>{}))
            outcomes.push_back(result.outcome);
        return outcomes;
    }

    TemporaryFolder folder_;
    SystemProbes probes_;
    FakeClock clock_;
    HandQueue queue_{clock_};
    MonitorEngine engine_{
        {.probes = probes_, .clock = clock_, .storage = folder_.path() / "state", .home = "/nowhere"}};
};

TEST_F(LiveStopTest, parentGoesWithItsWorkersWhileOthersComeAndGo) {
    // A bystander of the same project, and two thousand short lives around the stop.
    folder_.write("package.json", "{}");
    folder_.write("server.py", serverScript);
    const auto bystander = start("/usr/bin/python3", {"python3", "-c", "import time; time.sleep(60)"});
    const auto churn = start("/bin/sh", {"sh", "-c",
                                         "i=0; while [ $i -lt 2000 ]; do (:) & i=$((i+1)); done; "
                                         "wait; touch churned"});
    const auto server = start("/usr/bin/python3", {"python3", "server.py"});
    ASSERT_TRUE(comes("ready"));
    const auto snapshot = sample();
    const auto service = std::ranges::find_if(
        snapshot->services, [&](const Service& one) { return one.root->id.pid == server.pid(); });
    ASSERT_NE(service, snapshot->services.end());
    const auto plan = StopPlanner::make(*service, *snapshot, probes_.userID(), getpid());
    ASSERT_TRUE(plan);
    ASSERT_EQ(plan->targets.size(), 3U);
    EXPECT_EQ(plan->project, folder_.path().filename().string());

    EXPECT_EQ(execute(*plan, StopForce::polite), (std::vector{stopped, stopped, stopped}));
    EXPECT_EQ(engine_.archive().actions.at(0).detail, "3 of 3 reviewed processes exited.");
    EXPECT_TRUE(probes_.identity(bystander.pid()));
    EXPECT_TRUE(comes("churned")) << "the churn was never signalled";
}

TEST_F(LiveStopTest, programNeverStopsItself) {
    const auto snapshot = sample();
    const auto self = std::ranges::find_if(snapshot->processes,
                                           [](const SampleRef& one) { return one->id.pid == getpid(); });
    ASSERT_NE(self, snapshot->processes.end());
    EXPECT_FALSE(StopPlanner::make(**self, *snapshot, probes_.userID(), getpid()));
    // Even a plan that names it by mistake is refused by the kernel layer.
    StopPlan mistaken;
    mistaken.targets = {{(*self)->id, (*self)->uid, "self"}};
    EXPECT_EQ(execute(mistaken, StopForce::forced), std::vector{denied});
}

} // namespace
} // namespace varnet
