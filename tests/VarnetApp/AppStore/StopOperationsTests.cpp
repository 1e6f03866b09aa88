#include "tests/VarnetApp/AppStore/StoppingFixture.h"

#include <algorithm>

namespace varnet {
namespace {

using enum StopOutcome;
using Pids = std::vector<std::int32_t>;
using Outcomes = std::vector<StopOutcome>;

class StopOperationsTest : public StoppingFixture {};

TEST_F(StopOperationsTest, reviewsWhatTheUserSeesAndNothingElse) {
    Service stale = service(server);
    auto root = std::make_shared<ProcessSample>(*stale.root);
    root->id.start += 1;
    stale.root = root;
    stopping().prepareStop(stale);
    EXPECT_EQ(message(),
              "This service changed or cannot be stopped by this user. Refresh and inspect it again.");
    EXPECT_FALSE(stopping().stopPlan());

    stopping().prepareStop(service(server));
    ASSERT_TRUE(stopping().stopPlan());
    EXPECT_EQ(stopping().stopPlan()->targets.size(), 3U);
    EXPECT_TRUE(stopping().stopIsService());
    EXPECT_FALSE(stopping().stopWasForgotten());
    EXPECT_TRUE(probes.sent.empty()) << "a review stops nothing";
    stopping().closeStop();
    EXPECT_FALSE(stopping().stopPlan());
    EXPECT_FALSE(stopping().stopIsService());
}

TEST_F(StopOperationsTest, stopsAServerWithItsWorkersAndRemembersIt) {
    stopping().prepareStop(service(server));
    stopping().executeStop(StopForce::polite);
    EXPECT_TRUE(stopping().isStopping());
    queue.advance(1);
    EXPECT_FALSE(stopping().isStopping());
    EXPECT_EQ(outcomes(stopping().stopResults()), (Outcomes{stopped, stopped, stopped}));
    EXPECT_EQ(signalled(SIGTERM), (Pids{102, 101, server})) << "children before their parent";
    EXPECT_EQ(message(), "node server has left the building.");
    ASSERT_EQ(told.size(), 1U);
    EXPECT_FALSE(told[0].forgotten);
    ASSERT_EQ(store->stoppedServices().size(), 1U);
    EXPECT_EQ(store->stoppedServices()[0].project, folder.path("shop"));
    EXPECT_EQ(history(), "node server stopped | 3 of 3 reviewed processes exited.");
}

TEST_F(StopOperationsTest, aSurvivorIsForcedAloneAndOnlyWhenTheUserInsists) {
    stubborn = 101;
    stopping().prepareStop(service(server));
    stopping().executeStop(StopForce::polite);
    queue.advance(11);
    EXPECT_EQ(outcomes(stopping().stopResults()), (Outcomes{stopped, stillRunning, stopped}));
    EXPECT_EQ(message(), "");
    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(store->stoppedServices().empty());
    EXPECT_EQ(history(), "node server: partial result | 2 of 3 reviewed processes exited.");
    queue.advance(60);
    EXPECT_TRUE(signalled(SIGKILL).empty()) << "nothing escalates by itself";

    stopping().executeStop(StopForce::forced);
    queue.advance(1);
    EXPECT_EQ(signalled(SIGKILL), Pids{101});
    EXPECT_EQ(outcomes(stopping().stopResults()), (Outcomes{stopped, stopped, stopped}));
    EXPECT_EQ(message(), "node server has left the building.");
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].results, 3U) << "the collection is told of the whole plan";

    const std::string before = history();
    stopping().executeStop(StopForce::forced);
    EXPECT_FALSE(stopping().isStopping()) << "nobody is left to be forced";
    EXPECT_EQ(history(), before);
}

TEST_F(StopOperationsTest, forceWithoutAFirstTryMeansTheWholePlan) {
    stopping().prepareStop(service(server));
    stopping().executeStop(StopForce::forced);
    queue.advance(1);
    EXPECT_EQ(signalled(SIGKILL).size(), 3U);
    EXPECT_TRUE(signalled(SIGTERM).empty());
}

TEST_F(StopOperationsTest, targetsThatChangedMeanwhileAreLeftAlone) {
    stopping().prepareStop(service(server));
    probes.processes[101].start += 5; // the pid went to somebody else while the sheet was open
    probes.processes.erase(102);
    stopping().executeStop(StopForce::polite);
    queue.advance(1);
    EXPECT_EQ(outcomes(stopping().stopResults()), (Outcomes{stopped, identityChanged, alreadyStopped}));
    EXPECT_TRUE(probes.processes.contains(101));
    EXPECT_EQ(message(), "") << "what was reviewed is not known to be gone";
    EXPECT_TRUE(told.empty());
}

TEST_F(StopOperationsTest, nothingElseBeginsWhileExitsAreAwaited) {
    stubborn = server;
    stopping().prepareStop(service(server));
    stopping().executeStop(StopForce::polite);
    queue.advance(1);
    const std::size_t sent = probes.sent.size();
    stopping().executeStop(StopForce::forced);
    stopping().prepareStop(service(other));
    stopping().closeStop();
    stopping().prepareBatchStop(stopping().batchRequests(group("Editor")));
    queue.advance(1);
    EXPECT_EQ(probes.sent.size(), sent);
    ASSERT_TRUE(stopping().stopPlan());
    EXPECT_EQ(stopping().stopPlan()->root.pid, server);
    EXPECT_FALSE(stopping().batchStopPlan());
}

TEST_F(StopOperationsTest, aSingleProcessIsNoServiceToAnybody) {
    add(400, "node", 1).arguments = "node\tbuild.js";
    queue.advance(12);
    const auto& processes = store->snapshot().processes;
    const auto builder =
        std::ranges::find_if(processes, [](const SampleRef& process) { return process->id.pid == 400; });
    ASSERT_NE(builder, processes.end());
    stopping().prepareStop(**builder);
    EXPECT_FALSE(stopping().stopIsService());
    stopping().executeStop(StopForce::polite);
    queue.advance(1);
    EXPECT_EQ(message(), "node has left the building.");
    EXPECT_TRUE(told.empty());
    EXPECT_TRUE(store->stoppedServices().empty());
}

} // namespace
} // namespace varnet
