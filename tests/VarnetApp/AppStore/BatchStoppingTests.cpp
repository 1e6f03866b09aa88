#include "tests/VarnetApp/AppStore/StoppingFixture.h"

#include <cerrno>
#include <functional>

namespace varnet {
namespace {

using enum StopOutcome;
using Asked = std::vector<std::pair<std::int32_t, bool>>;
using Outcomes = std::vector<StopOutcome>;

class BatchStoppingTest : public StoppingFixture {
protected:
    /// Requests of groups by name, one after the other.
    std::vector<BatchStopRequest> requestsOf(std::initializer_list<const char*> names) {
        std::vector<BatchStopRequest> requests;
        for (const char* const name : names)
            for (BatchStopRequest& request : stopping().batchRequests(group(name)))
                requests.push_back(std::move(request));
        return requests;
    }
};

TEST_F(BatchStoppingTest, sharedWorkersAppearOnceAndApplicationsComeFirst) {
    auto requests = requestsOf({"shop", "Editor"});
    for (const SampleRef& process : store->snapshot().processes)
        if (process->id.pid == 101) requests.push_back({BatchStopRequest::Process{process->id}});
    stopping().prepareBatchStop(requests);
    ASSERT_TRUE(stopping().batchStopPlan());
    EXPECT_EQ(stopping().batchStopPlan()->targets().size(), 4U);
    EXPECT_EQ(stopping().batchServices().size(), 1U);

    stopping().executeBatchStop(StopForce::polite);
    EXPECT_TRUE(stopping().isBatchStopping());
    queue.advance(2);
    EXPECT_FALSE(stopping().isBatchStopping());
    EXPECT_EQ(outcomes(stopping().batchStopResults()), (Outcomes{stopped, stopped, stopped, stopped}));
    EXPECT_EQ(quitting.asked, (Asked{{editor, false}}));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(store->stoppedServices().size(), 1U);
    stopping().closeBatchStop();
    EXPECT_FALSE(stopping().batchStopPlan());
    EXPECT_TRUE(stopping().batchServices().empty());
}

TEST_F(BatchStoppingTest, aStaleSelectionStopsNothing) {
    auto requests = requestsOf({"shop", "Editor"});
    probes.processes[editor].start += 1;
    queue.advance(3);
    stopping().prepareBatchStop(requests);
    EXPECT_FALSE(stopping().batchStopPlan());
    EXPECT_EQ(message(), "Some selected items changed or can’t be stopped. Clear the selection and review "
                         "them again. Nothing was stopped.");
    EXPECT_TRUE(probes.sent.empty());
}

TEST_F(BatchStoppingTest, applicationsAreLookedAtAgainBeforeTheyAreAsked) {
    const auto app = [&]() -> FakeQuitting::Application& { return quitting.applications[editor]; };
    const auto gone = [&] { probes.processes.erase(editor); };
    const auto hidden = [&] {
        probes.processes.erase(editor);
        probes.existsAnswers[editor] = EPERM;
    };
    struct Row {
        const char* oddity;
        std::function<void()> meanwhile;
        StopOutcome outcome;
        bool asked;
        const char* detail = "";
    };
    const FakeProcess original = probes.processes[editor];
    const std::vector<Row> rows{
        {"gone", gone, alreadyStopped, false},
        {"cannot be read", hidden, denied, false},
        {"its pid was given away", [&] { probes.processes[editor].start += 1; }, identityChanged, false},
        {"another user's", [&] { probes.processes[editor].uid = 0; }, identityChanged, false},
        {"moved", [&] { app().bundlePath = "/elsewhere.desktop"; }, identityChanged, false},
        {"the same place written otherwise",
         [&] { app().bundlePath = "/usr/share//applications/./Editor.desktop"; }, stopped, true},
        {"no application any more", [&] { quitting.applications.erase(editor); }, identityChanged, false},
        {"does not listen", [&] { app().accepts = false; }, stillRunning, true,
         "The app did not accept the request. Check its windows."},
        {"asks its user first", [&] { app().goes = false; }, stillRunning, true,
         "Check the app for a save or confirmation dialog."},
    };
    for (const Row& row : rows) {
        stopping().prepareBatchStop(requestsOf({"Editor"}));
        ASSERT_TRUE(stopping().batchStopPlan()) << row.oddity;
        row.meanwhile();
        stopping().executeBatchStop(StopForce::polite);
        queue.advance(11);
        ASSERT_EQ(outcomes(stopping().batchStopResults()), Outcomes{row.outcome}) << row.oddity;
        EXPECT_EQ(stopping().batchStopResults()->front().detail, row.detail) << row.oddity;
        EXPECT_EQ(!quitting.asked.empty(), row.asked) << row.oddity;
        stopping().closeBatchStop();
        quitting.asked.clear();
        probes.processes[editor] = original;
        probes.existsAnswers.clear();
        quitting.applications[editor] = {.bundlePath = application(0).bundlePath};
        queue.advance(12);
    }
}

TEST_F(BatchStoppingTest, onlySurvivorsAreForcedAndEachServerStandsForItself) {
    stubborn = server;
    quitting.applications[mailer].goes = false;
    stopping().prepareBatchStop(requestsOf({"shop", "blog", "Editor", "Mailer"}));
    ASSERT_TRUE(stopping().batchStopPlan());
    stopping().executeBatchStop(StopForce::polite);
    stopping().executeBatchStop(StopForce::polite);
    queue.advance(25);
    EXPECT_EQ(outcomes(stopping().batchStopResults()),
              (Outcomes{stopped, stillRunning, stillRunning, stopped, stopped, stopped}));
    ASSERT_EQ(told.size(), 1U) << "the other server is gone with all it had";
    EXPECT_EQ(told[0].results, 1U);
    EXPECT_EQ(store->stoppedServices().size(), 1U);

    quitting.applications[mailer].goes = true;
    quitting.asked.clear();
    probes.sent.clear();
    stopping().executeBatchStop(StopForce::forced);
    queue.advance(4);
    EXPECT_EQ(quitting.asked, (Asked{{mailer, true}}));
    EXPECT_EQ(signalled(SIGKILL), std::vector<std::int32_t>{server});
    EXPECT_EQ(outcomes(stopping().batchStopResults()), Outcomes(6, stopped));
    EXPECT_EQ(store->stoppedServices().size(), 2U) << "no server is remembered twice";

    const std::size_t sent = probes.sent.size();
    stopping().executeBatchStop(StopForce::forced);
    EXPECT_FALSE(stopping().isBatchStopping());
    EXPECT_EQ(probes.sent.size(), sent);
}

TEST_F(BatchStoppingTest, aForcedBatchIsNotWaitedForAsLong) {
    quitting.applications[editor].goes = false;
    stopping().prepareBatchStop(requestsOf({"Editor"}));
    stopping().executeBatchStop(StopForce::forced);
    queue.advance(2.9);
    EXPECT_TRUE(stopping().isBatchStopping());
    queue.advance(0.5);
    EXPECT_FALSE(stopping().isBatchStopping());
}

} // namespace
} // namespace varnet
