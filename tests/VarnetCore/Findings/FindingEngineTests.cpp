#include "VarnetCore/Findings/FindingEngine.h"
#include "tests/VarnetCore/Findings/SampleMaking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
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

ProcessSample busy(std::int32_t pid, double cpu) {
    ProcessSample sample = process(pid);
    sample.cpu = cpu;
    return sample;
}

TEST(FindingEngine, ASumThatIsNoNumberIsNotHardWork) {
    FindingEngine engine;
    const std::vector<ApplicationGroup> groups{
        group("app:x", {busy(7, std::numeric_limits<double>::quiet_NaN()), busy(8, 400)})};
    engine.evaluate(groups, {}, {}, noon);
    EXPECT_THAT(engine.highSince(), IsEmpty());
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

TEST(FindingEngine, AnyLivingAgentInTheProjectKeepsItsServers) {
    ProcessSample root = process(5);
    root.project = project("/w/a");
    root.attribution = std::make_shared<const Attribution>(
        Attribution{"Codex", identity(99), Confidence::observed, "", noon - 3600});
    const Service service = server(root);
    using Row = std::tuple<const char*, std::int32_t, const char*, Confidence, bool>;
    for (const auto& [oddity, origin, where, confidence, reported] : {
             Row{"at work there, though only guessed", 7, "/w/a", Confidence::unknown, false},
             Row{"at work in a project below it", 7, "/w/a/b", Confidence::observed, true},
             Row{"gone, its pid lives on as another process", 8, "/w/a", Confidence::observed, true},
         }) {
        ProcessSample worker = process(6);
        worker.project = project(where);
        worker.attribution = std::make_shared<const Attribution>(
            Attribution{"Gemini CLI", identity(origin), confidence, "", std::nullopt});
        ProcessSample reused = process(8);
        reused.id.start += 1;
        const std::vector<SampleRef> processes{service.root, shared(worker), shared(process(7)),
                                               shared(reused)};
        EXPECT_EQ(FindingEngine().evaluate({}, std::vector{service}, processes, noon).size(),
                  reported ? 1U : 0U)
            << oddity;
    }
}

} // namespace
} // namespace varnet
