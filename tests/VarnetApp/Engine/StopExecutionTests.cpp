#include "VarnetApp/Engine/StopExecution.h"
#include "VarnetCore/Findings/StopPlanner.h"
#include "tests/VarnetApp/Engine/EngineFixture.h"
#include "tests/fakes/HandQueue.h"

#include <signal.h>

#include <functional>
#include <set>

namespace varnet {
namespace {

/// A stop on a pretended machine, turned by hand.
class StopExecutionTest : public EngineFixture {
public:
    using Results = std::vector<StopResult>;

    /// A server with two workers, in a checkout, as one pass sees it.
    void startServer() {
        FakeProcess& server = add(100, "node");
        server.ports = {{3000}};
        server.cwd = makeCheckout("shop");
        add(101, "worker", 100);
        add(102, "worker", 100);
        snapshot = sample();
    }

    StopPlan plan() const {
        return StopPlanner::make(*process(snapshot, 100), *snapshot, probes.user, selfPID).value();
    }

    StopTarget target(std::int32_t pid) const {
        const auto sampled = process(snapshot, pid);
        return {sampled->id, sampled->uid, sampled->name.str()};
    }

    void execute(StopPlan reviewed, StopForce force = StopForce::polite) {
        results.reset();
        engine->execute(std::move(reviewed), force, queue,
                        [this](Results told) { results = std::move(told); });
    }

    std::vector<StopOutcome> outcomes() const {
        std::vector<StopOutcome> outcomes;
        for (const StopResult& result : results.value_or(Results{}))
            outcomes.push_back(result.outcome);
        return outcomes;
    }

    static constexpr std::int32_t selfPID = 4242;
    Snapshot snapshot;
    HandQueue queue{clock};
    std::optional<Results> results;
};

using enum StopOutcome;

TEST_F(StopExecutionTest, nothingEscalatesByItself) {
    startServer();
    probes.onSignal = [this](std::int32_t pid, std::int32_t) {
        if (pid != 100) probes.processes.erase(pid);
    };
    execute(plan());
    queue.advance(9.99);
    EXPECT_FALSE(results) << "still waiting";
    queue.advance(0.5);
    EXPECT_EQ(outcomes(), (std::vector{stillRunning, stopped, stopped}));
    EXPECT_EQ(probes.sent.size(), 3U);
    EXPECT_EQ(engine->archive().actions[0].title, "node server: partial result");
    EXPECT_EQ(engine->archive().actions[0].detail, "2 of 3 reviewed processes exited.");
    queue.advance(60);
    EXPECT_EQ(probes.sent.size(), 3U);
}

TEST_F(StopExecutionTest, forcedStopWaitsThreeSeconds) {
    startServer();
    execute(plan(), StopForce::forced);
    queue.advance(2.99);
    EXPECT_FALSE(results);
    queue.advance(0.26);
    EXPECT_EQ(outcomes(), (std::vector{stillRunning, stillRunning, stillRunning}));
}

TEST_F(StopExecutionTest, onlyTheReviewedProcessIsEverSignalled) {
    struct Row {
        const char* name;
        std::function<void(StopExecutionTest&, StopPlan&)> change; ///< between review and signal
        StopOutcome outcome;
        bool asked; ///< the kernel layer was asked at all
    };
    const Row rows[] = {
        {"another boot", [](auto&, StopPlan& p) { ++p.targets[0].identity.boot; }, identityChanged, false},
        {"another start", [](auto&, StopPlan& p) { ++p.targets[0].identity.start; }, identityChanged, true},
        {"another user", [](auto&, StopPlan& p) { p.targets[0].uid = 0; }, denied, true},
        {"pid 1", [](auto&, StopPlan& p) { p.targets[0].identity.pid = 1; }, denied, true},
        {"gone by now", [](auto& t, StopPlan&) { t.probes.processes.erase(100); }, alreadyStopped, true},
        {"pid reused after the review", [](auto& t, StopPlan&) { ++t.probes.processes[100].start; },
         identityChanged, true},
        {"taken over by another user", [](auto& t, StopPlan&) { t.probes.processes[100].uid = 0; },
         identityChanged, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        startServer();
        StopPlan reviewed = plan();
        reviewed.targets.resize(1);
        row.change(*this, reviewed);
        probes.sent.clear();
        bool delivered = false;
        probes.onSignal = [&](std::int32_t, std::int32_t) { delivered = true; };
        execute(reviewed);
        EXPECT_EQ(outcomes(), std::vector{row.outcome});
        EXPECT_FALSE(delivered);
        EXPECT_EQ(!probes.sent.empty(), row.asked);
        EXPECT_EQ(results->front().detail, row.outcome == denied ? "Operation not permitted" : "");
        probes.onSignal = nullptr;
        engine->resetAfterSleep();
    }
}

TEST_F(StopExecutionTest, reusedPidDuringTheWaitCountsAsStopped) {
    startServer();
    StopPlan reviewed = plan();
    reviewed.targets.resize(1);
    execute(reviewed);
    queue.advance(1);
    FakeProcess& heir = add(100, "heir");
    heir.start += 7;
    queue.advance(0.25);
    EXPECT_EQ(outcomes(), std::vector{stopped});
    EXPECT_EQ(probes.sent.size(), 1U);
}

TEST_F(StopExecutionTest, unconfirmedExitIsNoExit) {
    startServer();
    StopPlan reviewed = plan();
    reviewed.targets.resize(1);
    execute(reviewed);
    probes.processes.erase(100);
    probes.existsAnswers[100] = EPERM; // something is there that cannot be read
    queue.advance(11);
    EXPECT_EQ(outcomes(), std::vector{stillRunning});
}

TEST_F(StopExecutionTest, passesGoOnWhileAStopWaits) {
    startServer();
    execute(plan());
    queue.advance(2);
    EXPECT_GT(sample()->date, snapshot->date);
    queue.advance(2);
    add(200, "newcomer");
    EXPECT_TRUE(process(sample(), 200));
    EXPECT_FALSE(results);
}

TEST_F(StopExecutionTest, engineThatEndsWritesNothing) {
    startServer();
    execute(plan());
    queue.advance(1);
    engine.reset();
    queue.advance(60);
    EXPECT_FALSE(results);
    EXPECT_EQ(queue.waiting(), 0U);
    restart();
    EXPECT_TRUE(engine->archive().actions.empty());
}

TEST_F(StopExecutionTest, notOneSignalOutsideThePlanUnderChurn) {
    startServer();
    const StopPlan reviewed = plan();
    std::set<std::pair<std::int32_t, std::uint64_t>> allowed;
    for (const StopTarget& t : reviewed.targets)
        allowed.emplace(t.identity.pid, t.identity.start);
    // Between any two calls to the kernel others come, go and take over pids, the plan's own included.
    int round = 0;
    probes.onSignal = [&](std::int32_t pid, std::int32_t) {
        probes.processes.erase(pid);
        for (int i = 0; i < 2'000; ++i) {
            const std::int32_t churned = 100 + (round * 7 + i) % 3'000;
            FakeProcess& heir = add(churned, "churn", 100);
            heir.start += static_cast<std::uint64_t>(++round) * 1'000;
        }
    };
    execute(reviewed);
    queue.advance(11);
    for (const auto& signal : probes.sent) {
        EXPECT_TRUE(allowed.contains({signal.pid, signal.start})) << signal.pid;
    }
    EXPECT_LE(probes.sent.size(), reviewed.targets.size());
    ASSERT_TRUE(results);
}

TEST_F(StopExecutionTest, ignoredFindingIsEvaluatedButNotShown) {
    FakeProcess& busy = add(100, "busy");
    Snapshot current;
    const auto work = [&](int passes) {
        for (int i = 0; i < passes; ++i) {
            *busy.cpu += 2'000'000'000;
            current = sampleAfter(2);
        }
    };
    work(34);
    ASSERT_EQ(current->findings.size(), 1U);
    const Finding finding = current->findings[0];
    EXPECT_EQ(finding.title, "busy is working overtime");
    engine->ignore(finding.id);
    work(2);
    EXPECT_TRUE(current->findings.empty());
    engine->unignore(finding.id);
    work(1);
    ASSERT_EQ(current->findings.size(), 1U);
    EXPECT_EQ(current->findings[0].firstSeen, finding.firstSeen);
    engine->resetAfterSleep();
    work(3);
    EXPECT_TRUE(current->findings.empty()) << "sleep is no sustained work";
}

} // namespace
} // namespace varnet
