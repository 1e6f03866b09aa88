#include "VarnetCore/Findings/RestartDetection.h"
#include "tests/VarnetCore/Findings/SampleMaking.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <tuple>
#include <vector>

namespace varnet {
namespace {

using namespace samples;
using testing::ElementsAre;
using testing::Field;

/// Started that many seconds before noon.
Service webServer(std::int32_t pid, std::uint64_t age,
                  const std::function<void(ProcessSample&)>& change = {}) {
    ProcessSample root = process(pid);
    root.id = identity(pid, age);
    root.project = project("/w/a");
    root.cwd = "/w/a/web";
    root.ports = {3000};
    if (change) change(root);
    return server(root);
}

std::vector<Finding> restartsOf(const Service& stopped, const Service& running) {
    std::vector<StoppedService> memory;
    std::vector<Finding> findings;
    RestartDetection::remember(stopped, noon - 60, memory);
    RestartDetection::update(memory, std::vector{running}, {}, noon, findings);
    return findings;
}

TEST(RestartDetection, OnlyTheLikeOfWhatWasStoppedCounts) {
    using Row = std::tuple<const char*, Service, bool>;
    using Sample = ProcessSample&;
    for (const auto& [oddity, running, reported] : {
             Row{"a new instance", webServer(6, 59), true},
             Row{"a new instance under the old pid", webServer(5, 59), true},
             Row{"the stopped one itself", webServer(5, 5000), false},
             Row{"started in the moment of the stop", webServer(6, 60), false},
             Row{"one that ran beside it all the time", webServer(6, 5000), false},
             Row{"another folder", webServer(6, 59, [](Sample s) { s.cwd = "/w/a"; }), false},
             Row{"folder not known", webServer(6, 59, [](Sample s) { s.cwd.reset(); }), false},
             Row{"another project", webServer(6, 59, [](Sample s) { s.project = project("/w/b"); }), false},
             Row{"no project", webServer(6, 59, [](Sample s) { s.project.reset(); }), false},
             Row{"another name", webServer(6, 59, [](Sample s) { s.ports = {}; }), false},
         }) {
        EXPECT_EQ(restartsOf(webServer(5, 5000), running).size(), reported ? 1U : 0U) << oddity;
    }
    EXPECT_TRUE(restartsOf(webServer(5, 59), webServer(5, 59)).empty())
        << "the clock was set back while it was stopping: still no new instance";
    const auto bare = [](Sample s) {
        s.cwd.reset();
        s.project.reset();
    };
    const auto findings = restartsOf(webServer(5, 5000, bare), webServer(6, 59, bare));
    ASSERT_EQ(findings.size(), 1U) << "what neither has counts as the same";
    EXPECT_FALSE(findings[0].groupID);
}

TEST(RestartDetection, LookingTwiceAtOnePassShowsNothingTwice) {
    const auto kept = [] {
        Finding finding;
        finding.id = "cpu:x";
        return finding;
    };
    std::vector<StoppedService> memory;
    RestartDetection::remember(webServer(5, 5000), noon - 100, memory);
    RestartDetection::remember(webServer(5, 5000), noon - 50, memory);
    EXPECT_EQ(memory.size(), 1U) << "one process is remembered once";
    const auto worker = [](ProcessSample& s) { s.cwd = "/w/a/api"; };
    RestartDetection::remember(webServer(7, 5000, worker), noon - 50, memory);
    const std::vector<Service> services{webServer(6, 10), webServer(8, 10, worker)};
    std::vector<Finding> findings{kept()};

    const auto id = [](const std::string& text) { return Field(&Finding::id, text); };
    const std::string first = "restarted:" + identity(6, 10).id();
    const std::string second = "restarted:" + identity(8, 10).id();
    for (int look = 0; look < 2; ++look) {
        RestartDetection::update(memory, services, {}, noon, findings);
        EXPECT_THAT(findings, ElementsAre(id(second), id(first), id("cpu:x")));
    }
    RestartDetection::update(memory, services, {{second, noon}}, noon + 20, findings);
    EXPECT_THAT(findings, ElementsAre(id(first), id("cpu:x")))
        << "120 s old still counts; set aside does not";
    RestartDetection::update(memory, services, {}, noon + 20.5, findings);
    EXPECT_THAT(findings, ElementsAre(id(second), id("cpu:x")));
    EXPECT_EQ(memory.size(), 1U);
}

} // namespace
} // namespace varnet
