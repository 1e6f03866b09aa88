#include "VarnetCore/Findings/FindingEngine.h"
#include "tests/VarnetCore/Findings/SampleMaking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace varnet {
namespace {

using namespace samples;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;

ApplicationGroup group(const std::string& id, std::vector<ProcessSample> processes) {
    ApplicationGroup group;
    group.id = id;
    group.name = id;
    for (ProcessSample& process : processes)
        group.processes.push_back(shared(std::move(process)));
    return group;
}

ProcessSample busy(std::int32_t pid, std::optional<double> cpu, std::uint64_t age = 10'000) {
    ProcessSample sample = process(pid);
    sample.id = identity(pid, age);
    sample.cpu = cpu;
    return sample;
}

TEST(FindingEngine, AMinuteCountsOnlyWithoutAGap) {
    ProcessSample unmeasured = busy(8, 400);
    unmeasured.memory.reset();
    struct Row {
        const char* between; ///< what the group is like half-way through the minute
        std::vector<ProcessSample> processes;
        bool reported;
    };
    for (const Row& row : {
             Row{"exactly on the line", {busy(7, 80)}, true},
             Row{"just below the line", {busy(7, 79.9)}, false},
             Row{"many small children", {busy(7, 20), busy(8, 20), busy(9, 20), busy(10, 20)}, true},
             Row{"a child comes whose memory is not known", {busy(7, 90), unmeasured}, false},
             Row{"a child comes whose CPU is not known", {busy(7, 90), busy(8, std::nullopt)}, false},
             Row{"a sum that is no number", {busy(7, std::numeric_limits<double>::quiet_NaN())}, false},
             Row{"a younger process joins", {busy(8, 90, 50), busy(7, 0)}, true},
             Row{"the oldest process has gone", {busy(8, 90, 50)}, false},
             Row{"no processes", {}, false},
         }) {
        FindingEngine engine;
        const std::vector<ApplicationGroup> group{varnet::group("app:x", {busy(7, 90)})};
        EXPECT_THAT(engine.evaluate(group, {}, {}, noon), IsEmpty()) << row.between;
        engine.evaluate(std::vector{varnet::group("app:x", row.processes)}, {}, {}, noon + 30);
        EXPECT_THAT(engine.evaluate(group, {}, {}, noon + 59.9), IsEmpty()) << row.between;
        const auto findings = engine.evaluate(group, {}, {}, noon + 60);
        ASSERT_EQ(findings.size(), row.reported ? 1U : 0U) << row.between;
        EXPECT_EQ(engine.highSince().at("app:x:" + std::to_string(identity(7).start)),
                  row.reported ? noon : noon + 59.9)
            << row.between;
    }
}

TEST(FindingEngine, InstancesOfTheSameMomentAreToldApart) {
    FindingEngine engine;
    // Processes of one clock tick, ids of one length: only their text differs.
    const std::vector<ApplicationGroup> both{group("process:1", {busy(1, 90)}),
                                             group("process:2", {busy(2, 90)})};
    engine.evaluate(both, {}, {}, noon);
    engine.evaluate(std::vector{both[0], group("process:2", {busy(2, 10)})}, {}, {}, noon + 10);
    const std::string start = std::to_string(identity(1).start);
    EXPECT_THAT(engine.highSince(), ElementsAre(Key("process:1:" + start)));
    engine.evaluate(std::vector{both[1]}, {}, {}, noon + 20);
    EXPECT_THAT(engine.highSince(), ElementsAre(Key("process:2:" + start))) << "the other has left the table";
    engine.reset();
    EXPECT_THAT(engine.highSince(), IsEmpty());
}

/// A server that its agent left behind, long enough ago.
ProcessSample leftBehind(std::int32_t pid) {
    ProcessSample root = process(pid);
    root.id = identity(pid, 7200);
    root.project = project("/w/a");
    root.ports = {3000};
    root.attribution = std::make_shared<const Attribution>(
        Attribution{"Codex", identity(99), Confidence::observed, "", noon - 1800});
    return root;
}

std::shared_ptr<const Attribution> changed(const ProcessSample& sample,
                                           const std::function<void(Attribution&)>& change) {
    Attribution attribution = *sample.attribution;
    change(attribution);
    return std::make_shared<const Attribution>(attribution);
}

TEST(FindingEngine, AServerIsForgottenOnlyWhenEverythingSaysSo) {
    struct Row {
        const char* oddity;
        std::function<void(ProcessSample&)> change;
        bool reported;
    };
    using Sample = ProcessSample&;
    for (const Row& row : {
             Row{"both spans exactly reached", [](Sample) {}, true},
             Row{"a second too young", [](Sample s) { s.id = identity(5, 7199); }, false},
             Row{"the agent has only just gone",
                 [](Sample s) {
                     s.attribution = changed(s, [](Attribution& a) { a.exitedAt = noon - 1799.9; });
                 },
                 false},
             Row{"the agent is not known to have gone",
                 [](Sample s) { s.attribution = changed(s, [](Attribution& a) { a.exitedAt.reset(); }); },
                 false},
             Row{"the agent is a guess",
                 [](Sample s) {
                     s.attribution = changed(s, [](Attribution& a) { a.confidence = Confidence::likely; });
                 },
                 false},
             Row{"nobody's server", [](Sample s) { s.attribution.reset(); }, false},
             Row{"no project", [](Sample s) { s.project.reset(); }, false},
         }) {
        ProcessSample root = leftBehind(5);
        row.change(root);
        const Service service = server(root);
        const auto findings = FindingEngine().evaluate({}, std::vector{service}, service.members, noon);
        ASSERT_EQ(findings.size(), row.reported ? 1U : 0U) << row.oddity;
        if (!row.reported) continue;
        EXPECT_EQ(findings[0].explanation,
                  "Codex exited 30m ago. The server is still running; it may still be in use.");
        EXPECT_EQ(findings[0].firstSeen, noon - 1800);
    }
}

TEST(FindingEngine, AnAgentAtWorkInTheProjectKeepsItsServers) {
    struct Row {
        const char* oddity;
        std::int32_t origin;
        const char* root;
        Confidence confidence;
        bool reported;
    };
    for (const Row& row : {
             Row{"alive in the same project", 7, "/w/a", Confidence::observed, false},
             Row{"alive there, though only guessed", 7, "/w/a", Confidence::unknown, false},
             Row{"alive in a project below it", 7, "/w/a/b", Confidence::observed, true},
             Row{"its pid lives on as another process", 8, "/w/a", Confidence::observed, true},
         }) {
        const Service service = server(leftBehind(5));
        ProcessSample worker = process(6);
        worker.project = project(row.root);
        worker.attribution = std::make_shared<const Attribution>(
            Attribution{"Gemini CLI", identity(row.origin), row.confidence, "", noon});
        ProcessSample reused = process(8);
        reused.id.start += 1;
        const std::vector<SampleRef> processes{service.root, shared(worker), shared(process(7)),
                                               shared(reused)};
        EXPECT_EQ(FindingEngine().evaluate({}, std::vector{service}, processes, noon).size(),
                  row.reported ? 1U : 0U)
            << row.oddity;
    }
}

ProcessSample viteOn(std::int32_t pid, int port) {
    ProcessSample root = process(pid);
    root.project = project("/w/a");
    root.cwd = "/w/a/web";
    root.arguments = {"node", "vite", "--port", std::to_string(port)};
    root.ports = {port};
    return root;
}

TEST(FindingEngine, ServersAreSimilarInAllButTheirPorts) {
    struct Row {
        const char* oddity;
        std::function<void(ProcessSample&)> change; ///< to the second of two
        bool reported;
    };
    using Sample = ProcessSample&;
    for (const Row& row : {
             Row{"another port", [](Sample) {}, true},
             Row{"the same port", [](Sample s) { s.ports = {3000}; }, false},
             Row{"none, the first has two", [](Sample s) { s.ports = {}; }, false},
             Row{"another folder", [](Sample s) { s.cwd = "/w/a"; }, false},
             Row{"folder not known", [](Sample s) { s.cwd.reset(); }, false},
             Row{"ports not known", [](Sample s) { s.portsAvailable = false; }, false},
             Row{"arguments not known", [](Sample s) { s.arguments = {}; }, false},
             Row{"another worktree", [](Sample s) { s.project = project("/w/b"); }, false},
             Row{"the other form of the switch",
                 [](Sample s) { s.arguments = {"node", "vite", "--port=3001"}; }, false},
         }) {
        ProcessSample second = viteOn(6, 3001);
        row.change(second);
        const std::vector<Service> services{server(viteOn(5, 3000)), server(second)};
        EXPECT_EQ(FindingEngine().evaluate({}, services, {}, noon).size(), row.reported ? 1U : 0U)
            << row.oddity;
    }
}

TEST(FindingEngine, ThreeSimilarServersAreOneFindingInAnyOrder) {
    const std::vector<Service> services{server(viteOn(10, 3000)), server(viteOn(9, 3001)),
                                        server(viteOn(8, 3002))};
    auto findings = FindingEngine().evaluate({}, services, {}, noon);
    ASSERT_EQ(findings.size(), 1U);
    const Finding& finding = findings[0];
    EXPECT_EQ(finding.title, "3 similar servers");
    EXPECT_EQ(finding.id, "duplicate:" + identity(10).id() + ";" + identity(8).id() + ";" + identity(9).id())
        << "sorted as text";
    EXPECT_THAT(finding.targets, ElementsAre(identity(10), identity(9), identity(8)));
    EXPECT_EQ(finding.firstSeen, noon);
    const std::vector<Service> turned(services.rbegin(), services.rend());
    EXPECT_EQ(FindingEngine().evaluate({}, turned, {}, noon)[0].id, finding.id);
}

} // namespace
} // namespace varnet
