// Stopping real children of the test on the running kernel. Only the clock that waits is a fake.

#include "VarnetApp/Engine/MonitorEngine.h"
#include "VarnetCore/Findings/StopPlanner.h"
#include "probes/SystemProbes.h"
#include "tests/fakes/ChildProcess.h"
#include "tests/fakes/FakeClock.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace varnet {
namespace {

namespace fs = std::filesystem;
using Results = std::vector<StopResult>;

/// Listens, starts two workers, and says when all stand. "stubborn" does not go when asked.
constexpr const char* serverScript = R"(
import os, signal, socket, sys, time
s = socket.create_server(('127.0.0.1', 0))
for _ in range(2):
    if os.fork() == 0:
        time.sleep(60)
        os._exit(0)
if 'stubborn' in sys.argv:
    signal.signal(signal.SIGTERM, signal.SIG_IGN)
open('ready', 'w').close()
while True:
    time.sleep(60)
)";

class LiveStopTest : public testing::Test {
protected:
    LiveStopTest()
        : engine_(
              {.probes = probes_, .clock = clock_, .storage = folder_.path() / "state", .home = "/nowhere"}) {
        std::ofstream(folder_.path() / "package.json") << "{}";
        std::ofstream(folder_.path() / "server.py") << serverScript;
    }

    std::unique_ptr<ChildProcess> startServer(const std::string& manner) {
        auto child = std::make_unique<ChildProcess>(
            "/usr/bin/python3", std::vector<std::string>{"python3", "server.py", manner}, folder_.path());
        for (int tries = 0; tries < 500 && !fs::exists(folder_.path() / "ready"); ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return child;
    }

    /// The reviewed plan for the service that a child stands for.
    std::optional<StopPlan> review(pid_t pid) {
        clock_.advance(2);
        snapshot_ = engine_.sample({}, Thermal::nominal, true);
        for (const Service& service : snapshot_->services) {
            if (service.root->id.pid != pid) continue;
            const auto plan = StopPlanner::make(service, *snapshot_, probes_.userID(), getpid());
            return plan ? std::optional(*plan) : std::nullopt;
        }
        return std::nullopt;
    }

    /// Turns the queue through so many seconds, with a real moment before each look for signals to act.
    Results execute(const StopPlan& plan, StopForce force, double seconds) {
        std::optional<Results> results;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        engine_.execute(plan, force, queue_, [&](Results told) { results = std::move(told); });
        for (double waited = 0; waited <= seconds && !results; waited += StopExecution::pause) {
            std::this_thread::sleep_for(std::chrono::milliseconds(25));
            queue_.advance(StopExecution::pause);
        }
        return results.value_or(Results{});
    }

    static std::vector<StopOutcome> outcomes(const Results& results) {
        std::vector<StopOutcome> outcomes;
        for (const StopResult& result : results)
            outcomes.push_back(result.outcome);
        return outcomes;
    }

    TemporaryFolder folder_;
    SystemProbes probes_;
    FakeClock clock_;
    HandQueue queue_{clock_};
    MonitorEngine engine_;
    std::shared_ptr<const MonitorSnapshot> snapshot_;
};

using enum StopOutcome;

TEST_F(LiveStopTest, parentGoesWithItsWorkersWhileOthersComeAndGo) {
    // A bystander of the same project, and two thousand short lives around the stop.
    ChildProcess bystander("/usr/bin/python3", {"python3", "-c", "import time; time.sleep(60)"},
                           folder_.path());
    ChildProcess churn(
        "/bin/sh", {"sh", "-c", "i=0; while [ $i -lt 2000 ]; do (:) & i=$((i+1)); done; wait; touch churned"},
        folder_.path());
    const auto server = startServer("polite");
    const auto plan = review(server->pid());
    ASSERT_TRUE(plan);
    ASSERT_EQ(plan->targets.size(), 3U);
    EXPECT_EQ(plan->project, folder_.path().filename().string());

    EXPECT_EQ(outcomes(execute(*plan, StopForce::polite, 10)), (std::vector{stopped, stopped, stopped}));
    EXPECT_EQ(engine_.archive().actions.at(0).detail, "3 of 3 reviewed processes exited.");
    EXPECT_TRUE(probes_.identity(bystander.pid()));
    for (int tries = 0; tries < 1'000 && !fs::exists(folder_.path() / "churned"); ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_TRUE(fs::exists(folder_.path() / "churned")) << "the churn was never signalled";
}

TEST_F(LiveStopTest, stubbornServerRunsOnUntilTheUserInsists) {
    const auto server = startServer("stubborn");
    const auto plan = review(server->pid());
    ASSERT_TRUE(plan);
    const Results polite = execute(*plan, StopForce::polite, 11);
    EXPECT_EQ(outcomes(polite), (std::vector{stillRunning, stopped, stopped}));
    EXPECT_TRUE(probes_.identity(server->pid()));
    queue_.advance(30);
    EXPECT_TRUE(probes_.identity(server->pid())) << "nothing escalates by itself";

    StopPlan survivors = *plan;
    std::erase_if(survivors.targets,
                  [&](const StopTarget& target) { return target.identity.pid != server->pid(); });
    EXPECT_EQ(outcomes(execute(survivors, StopForce::forced, 3)), std::vector{stopped});
}

TEST_F(LiveStopTest, programNeverStopsItself) {
    clock_.advance(2);
    snapshot_ = engine_.sample({}, Thermal::nominal, true);
    for (const SampleRef& process : snapshot_->processes) {
        if (process->id.pid != getpid()) continue;
        EXPECT_FALSE(StopPlanner::make(*process, *snapshot_, probes_.userID(), getpid()));
        // Even a plan that names it by mistake is refused by the kernel layer.
        StopPlan mistaken;
        mistaken.targets = {{process->id, process->uid, "self"}};
        EXPECT_EQ(outcomes(execute(mistaken, StopForce::forced, 1)), std::vector{denied});
    }
}

} // namespace
} // namespace varnet
