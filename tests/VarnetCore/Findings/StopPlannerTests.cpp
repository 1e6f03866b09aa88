#include "VarnetCore/Findings/BatchStopPlanner.h"
#include "VarnetCore/Findings/StopPlanner.h"
#include "tests/VarnetCore/Findings/SampleMaking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <tuple>
#include <unordered_set>
#include <vector>

namespace varnet {
namespace {

using namespace samples;
using testing::ElementsAre;

constexpr std::int32_t self = 4242;

MonitorSnapshot snapshotOf(std::vector<ProcessSample> processes) {
    MonitorSnapshot snapshot;
    for (ProcessSample& process : processes)
        snapshot.processes.push_back(shared(std::move(process)));
    return snapshot;
}

std::vector<std::int32_t> pids(const std::vector<StopTarget>& targets) {
    std::vector<std::int32_t> list;
    for (const StopTarget& target : targets)
        list.push_back(target.identity.pid);
    return list;
}

TEST(StopPlanner, ATreeOfAnyShapeIsPlannedWithinItsLimits) {
    constexpr std::int32_t count = 100'000;
    using Row = std::tuple<const char*, std::function<std::int32_t(std::int32_t pid)>, std::size_t>;
    for (const auto& [shape, parent, targets] : {
             Row{"a chain: the root and 40 levels", [](std::int32_t pid) { return pid - 1; }, 41},
             Row{"a star", [](std::int32_t) { return 2; }, count},
             Row{"a loop through the root", [](std::int32_t pid) { return pid == 2 ? 3 : 2; }, count},
         }) {
        std::vector<ProcessSample> processes;
        for (std::int32_t pid = 2; pid < count + 2; ++pid)
            processes.push_back(process(pid, parent(pid)));
        const auto plan = StopPlanner::make(processes.front(), snapshotOf(processes), user, -1);
        ASSERT_TRUE(plan) << shape;
        EXPECT_EQ(plan->targets.size(), targets) << shape;
        EXPECT_TRUE(std::ranges::is_sorted(pids(plan->targets))) << shape << " in the table's order";
    }
}

TEST(StopPlanner, AChildIsOfTheRootsBootAndNoOlder) {
    using Row = std::tuple<const char*, ProcessIdentity, bool>;
    for (const auto& [oddity, child, taken] : {
             Row{"of the root's very moment", identity(6, 10'000), true},
             Row{"older than the root: the pid was reused", identity(6, 10'001), false},
             Row{"from another boot", {boot - 1, 6, identity(6).start}, false},
         }) {
        std::vector<ProcessSample> processes{process(5), process(6, 5), process(7, 6)};
        for (ProcessSample& process : processes)
            process.project = project("/w/a");
        processes[1].id = child;
        const auto plan = StopPlanner::make(processes[0], snapshotOf(processes), user, self);
        ASSERT_TRUE(plan) << oddity;
        EXPECT_EQ(pids(plan->targets), taken ? std::vector({5, 6, 7}) : std::vector({5})) << oddity;
    }
}

TEST(StopPlanner, TheSnapshotDecidesNotTheSampleHandedIn) {
    ProcessSample reviewed = process(5);
    ProcessSample current = reviewed;
    current.name = "vite";
    current.ports = {5173};
    const auto plan = StopPlanner::make(reviewed, snapshotOf({current}), user, self);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->targets[0].name, "vite");
    EXPECT_THAT(plan->ports, ElementsAre(5173));

    using enum StopPlanningError;
    const auto refusal = [&](const ProcessSample& process, MonitorSnapshot snapshot) {
        return StopPlanner::make(process, snapshot, user, self).error();
    };
    ProcessSample stale = reviewed;
    stale.id.start += 1;
    EXPECT_EQ(refusal(stale, snapshotOf({current})), unavailable) << "the pid alone names nobody";
    current.uid = 0;
    EXPECT_EQ(refusal(reviewed, snapshotOf({current})), protectedProcess);
    MonitorSnapshot failed = snapshotOf({reviewed});
    failed.error = "no measurement";
    EXPECT_EQ(refusal(reviewed, failed), unavailable);
    EXPECT_EQ(StopPlanner::make(server(reviewed), snapshotOf({reviewed}), user, self).error(), unavailable)
        << "a server without a port";
}

TEST(BatchStopPlanner, OverlappingSelectionsNameEachTargetOnce) {
    std::vector<ProcessSample> processes{process(5), process(6, 5), process(7, 6), process(8, 1, "editor")};
    processes[0].ports = {3000};
    processes[1].ports = {3001};
    const ApplicationDescriptor editor{"/x/editor.desktop", "editor", "Editor", 8, std::nullopt};
    processes[3].application = std::make_shared<const ApplicationDescriptor>(editor);
    const BatchStopRequest application{BatchStopRequest::Application{editor, identity(8)}};
    const BatchStopRequest lower{BatchStopRequest::Process{identity(6)}};
    const BatchStopRequest upper{BatchStopRequest::Process{identity(5)}};
    const std::vector requests{lower, application, upper, application, lower};
    const auto plan = BatchStopPlanner::make(requests, snapshotOf(processes), user, self);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->applications.size(), 1U);
    ASSERT_EQ(plan->processes.size(), 2U);
    EXPECT_NE(plan->processes[0].id, plan->processes[1].id);
    EXPECT_THAT(pids(plan->targets()), ElementsAre(8, 6, 7, 5));
    EXPECT_EQ(plan->processPlan()->name, "Selected processes");
    EXPECT_THAT(plan->processPlan()->ports, ElementsAre(3001)) << "the first plan's";

    const std::vector stale{upper, BatchStopRequest{BatchStopRequest::Process{identity(5, 1)}}};
    EXPECT_EQ(BatchStopPlanner::make(stale, snapshotOf(processes), user, self).error(),
              StopPlanningError::changed);
    EXPECT_EQ(BatchStopPlanner::make({}, snapshotOf(processes), user, self).error(),
              StopPlanningError::unavailable);
}

TEST(BatchStopPlanner, AnApplicationMustStillBeTheOneReviewed) {
    const ApplicationDescriptor reviewed{"/x/ed.desktop", "ed", "Ed", 8, identity(8).start};
    using Row = std::tuple<const char*, std::function<void(ProcessSample&)>, StopPlanningError>;
    using enum StopPlanningError;
    using Sample = ProcessSample&;
    const auto as = [](Sample s, const ApplicationDescriptor& application) {
        s.application = std::make_shared<const ApplicationDescriptor>(application);
    };
    for (const auto& [oddity, change, error] : {
             Row{"no application any more", [](Sample s) { s.application.reset(); }, changed},
             Row{"another application",
                 [&](Sample s) { as(s, {"/x/other.desktop", "ed", "Ed", 8, std::nullopt}); }, changed},
             Row{"only a helper now",
                 [&](Sample s) { as(s, {"/x/ed.desktop", "ed", "Ed", 9, std::nullopt}); }, changed},
             Row{"another user's", [](Sample s) { s.uid = 0; }, protectedProcess},
             Row{"the system's", [](Sample s) { s.isSystem = true; }, protectedProcess},
         }) {
        ProcessSample main = process(8, 1, "ed");
        as(main, reviewed);
        change(main);
        const std::vector<BatchStopRequest> requests{{BatchStopRequest::Application{reviewed, identity(8)}}};
        EXPECT_EQ(BatchStopPlanner::make(requests, snapshotOf({main}), user, self).error(), error) << oddity;
    }
    ApplicationDescriptor later = reviewed;
    later.processStart = identity(8).start + 1;
    ProcessSample main = process(8, 1, "ed");
    as(main, reviewed);
    const std::vector<BatchStopRequest> requests{{BatchStopRequest::Application{later, identity(8)}}};
    EXPECT_EQ(BatchStopPlanner::make(requests, snapshotOf({main}), user, self).error(), changed);
    const std::vector<BatchStopRequest> sound{{BatchStopRequest::Application{reviewed, identity(8)}}};
    EXPECT_EQ(BatchStopPlanner::make(sound, snapshotOf({main}), user, 8).error(), protectedProcess)
        << "the program itself";
}

TEST(BatchStopRequest, TellsApplicationsFromProcessesAndRunsFromRuns) {
    const ApplicationDescriptor editor{"/x", "x", "X", 8, std::nullopt};
    ApplicationDescriptor renamed = editor;
    renamed.name = "Y";
    const std::vector<BatchStopRequest> requests{
        {BatchStopRequest::Application{editor, identity(8)}},
        {BatchStopRequest::Application{renamed, identity(8)}},
        {BatchStopRequest::Process{identity(8)}},
        {BatchStopRequest::Process{identity(8, 5)}},
        {BatchStopRequest::Process{identity(8)}},
    };
    EXPECT_EQ(std::unordered_set(requests.begin(), requests.end()).size(), 4U);
    EXPECT_EQ(std::set(requests.begin(), requests.end()).size(), 4U);
}

} // namespace
} // namespace varnet
