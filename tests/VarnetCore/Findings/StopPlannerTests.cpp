#include "VarnetCore/Findings/BatchStopPlanner.h"
#include "VarnetCore/Findings/StopPlanner.h"
#include "tests/VarnetCore/Findings/SampleMaking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <string>
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
    struct Row {
        const char* shape;
        std::function<std::int32_t(std::int32_t pid)> parent;
        std::size_t targets;
    };
    for (const Row& row : {
             Row{"a chain: the root and 40 levels", [](std::int32_t pid) { return pid - 1; }, 41},
             Row{"a star", [](std::int32_t) { return 2; }, count},
             Row{"a loop through the root", [](std::int32_t pid) { return pid == 2 ? 3 : 2; }, count},
         }) {
        std::vector<ProcessSample> processes;
        for (std::int32_t pid = 2; pid < count + 2; ++pid)
            processes.push_back(process(pid, row.parent(pid)));
        const auto plan = StopPlanner::make(processes.front(), snapshotOf(processes), user, -1);
        ASSERT_TRUE(plan) << row.shape;
        EXPECT_EQ(plan->targets.size(), row.targets) << row.shape;
        EXPECT_TRUE(std::ranges::is_sorted(pids(plan->targets))) << row.shape << " in the table's order";
    }
}

TEST(StopPlanner, WhatMayNotBeStoppedIsLeftOutWithAllBelowIt) {
    struct Row {
        const char* oddity;
        std::function<void(ProcessSample&)> change; ///< to the child between root and grandchild
        bool taken;
    };
    using Sample = ProcessSample&;
    for (const Row& row : {
             Row{"a plain tool", [](Sample s) { s.name = "sleep"; }, true},
             Row{"of the root's very moment", [](Sample s) { s.id = identity(6, 10'000); }, true},
             Row{"older than the root: the pid was reused", [](Sample s) { s.id.start -= 1'000'000; }, false},
             Row{"from another boot", [](Sample s) { s.id.boot -= 1; }, false},
             Row{"in another worktree", [](Sample s) { s.project = project("/w/b"); }, false},
             Row{"in no worktree", [](Sample s) { s.project.reset(); }, false},
             Row{"another user's", [](Sample s) { s.uid = 0; }, false},
             Row{"the system's", [](Sample s) { s.isSystem = true; }, false},
             Row{"in a bundle", [](Sample s) { s.executable = "/opt/Ed.app/Contents/helper"; }, false},
             Row{"Python's own bundle",
                 [](Sample s) { s.executable = "/F/Resources/Python.app/Contents/MacOS/Python"; }, true},
             Row{"an agent",
                 [](Sample s) {
                     s.name = "codex";
                     s.executable = "/usr/bin/codex";
                 },
                 false},
             Row{"the main process of an application",
                 [](Sample s) {
                     s.application = std::make_shared<const ApplicationDescriptor>(
                         ApplicationDescriptor{"/x", "x", "X", 6, {}});
                 },
                 false},
             Row{"a helper of an application",
                 [](Sample s) {
                     s.application = std::make_shared<const ApplicationDescriptor>(
                         ApplicationDescriptor{"/x", "x", "X", 9, {}});
                 },
                 true},
         }) {
        std::vector<ProcessSample> processes{process(5), process(6, 5), process(7, 6)};
        for (ProcessSample& process : processes)
            process.project = project("/w/a");
        row.change(processes[1]);
        const auto plan = StopPlanner::make(processes[0], snapshotOf(processes), user, self);
        ASSERT_TRUE(plan) << row.oddity;
        EXPECT_EQ(pids(plan->targets), row.taken ? std::vector({5, 6, 7}) : std::vector({5})) << row.oddity;
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
    struct Row {
        const char* oddity;
        std::function<void(ProcessSample&)> change;
        StopPlanningError error;
    };
    using enum StopPlanningError;
    using Sample = ProcessSample&;
    const auto as = [](Sample s, const ApplicationDescriptor& application) {
        s.application = std::make_shared<const ApplicationDescriptor>(application);
    };
    for (const Row& row : {
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
        row.change(main);
        const std::vector<BatchStopRequest> requests{{BatchStopRequest::Application{reviewed, identity(8)}}};
        EXPECT_EQ(BatchStopPlanner::make(requests, snapshotOf({main}), user, self).error(), row.error)
            << row.oddity;
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
