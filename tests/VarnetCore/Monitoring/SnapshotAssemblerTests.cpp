#include "VarnetCore/Monitoring/SnapshotAssembler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace varnet {
namespace {

using testing::ElementsAre;

constexpr std::uint32_t user = 1000;

ProcessSample process(std::int32_t pid, std::int32_t parent, std::string name, std::uint64_t start = 0) {
    ProcessSample sample;
    sample.id = {1, pid, start > 0 ? start : static_cast<std::uint64_t>(pid)};
    sample.parentPID = parent;
    sample.uid = user;
    sample.name = name;
    sample.executable = "/usr/bin/" + name;
    return sample;
}

std::string agentOf(const SampleRef& sample) {
    return sample->attribution ? sample->attribution->agent : "";
}

TEST(SnapshotAssembler, SamplesAreSharedAndOutliveTheirPass) {
    SnapshotAssembler assembler;
    SampleRef kept;
    {
        const auto result =
            assembler.assemble({process(1, 0, "init"), process(2, 1, "node")}, {}, Date{}, user);
        EXPECT_EQ(result.groups[0].processes[0], result.processes[0]) << "a group copies nothing";
        kept = result.processes[1];
    }
    assembler.assemble({}, {}, Date{}, user);
    EXPECT_EQ(kept->name, "node");
}

TEST(SnapshotAssembler, AProcessThatChangesItsTitleIsLookedAtAgain) {
    SnapshotAssembler assembler;
    ProcessSample shell = process(2, 1, "bash");
    EXPECT_EQ(agentOf(assembler.assemble({shell}, {}, Date{}, user).processes[0]), "");
    shell.executable = "/usr/bin/node";
    shell.arguments = {"node", "/usr/bin/gemini"};
    EXPECT_EQ(agentOf(assembler.assemble({shell}, {}, Date{}, user).processes[0]), "Gemini CLI");
    const std::vector<ApplicationDescriptor> applications{
        {"/x.desktop", "com.openai.chat", "X", 2, std::nullopt}};
    shell.executable = "/usr/bin/bash";
    shell.arguments = {};
    EXPECT_EQ(agentOf(assembler.assemble({shell}, applications, Date{}, user).processes[0]), "ChatGPT");
}

TEST(SnapshotAssembler, AnUnchangedAttributionIsHandedOutAgain) {
    SnapshotAssembler assembler;
    const auto first = assembler.assemble({process(2, 1, "claude")}, {}, Date{}, user);
    const auto second = assembler.assemble({process(2, 1, "claude")}, {}, Date{}, user);
    EXPECT_EQ(first.processes[0]->attribution, second.processes[0]->attribution);
    assembler.lineage.begin()->second.agent = "edited";
    const auto third = assembler.assemble({process(2, 1, "claude")}, {}, Date{}, user);
    EXPECT_EQ(agentOf(third.processes[0]), "Claude Code") << "what a process itself is outranks the lineage";
}

TEST(SnapshotAssembler, ChainsEnd) {
    const auto chain = [](std::int32_t length) {
        std::vector<ProcessSample> samples{process(1, 0, "claude")};
        for (std::int32_t pid = 2; pid <= length + 1; ++pid)
            samples.push_back(process(pid, pid - 1, "zsh"));
        // Youngest first, so that nothing can hand the credit down step by step within the pass.
        std::reverse(samples.begin(), samples.end());
        return SnapshotAssembler().assemble(std::move(samples), {}, Date{}, user).processes.front();
    };
    EXPECT_EQ(agentOf(chain(40)), "Claude Code") << "the fortieth ancestor is reached";
    EXPECT_EQ(agentOf(chain(41)), "") << "the forty-first is not";

    SnapshotAssembler assembler;
    const auto reused =
        assembler.assemble({process(3, 2, "zsh", 5), process(2, 1, "claude", 9)}, {}, Date{}, user);
    EXPECT_EQ(agentOf(reused.processes[0]), "") << "a parent younger than its child is another process";

    const auto loop = assembler.assemble(
        {process(5, 4, "zsh", 7), process(4, 6, "zsh", 7), process(6, 4, "zsh", 7), process(7, 7, "zsh", 7)},
        {}, Date{}, user);
    for (const SampleRef& sample : loop.processes)
        EXPECT_EQ(agentOf(sample), "");
}

TEST(SnapshotAssembler, APidNamedTwiceMeansTheLaterProcess) {
    SnapshotAssembler assembler;
    const auto result = assembler.assemble(
        {process(2, 1, "claude", 2), process(2, 1, "codex", 3), process(9, 2, "zsh", 9)}, {}, Date{}, user);
    EXPECT_EQ(agentOf(result.processes[0]), "Claude Code");
    EXPECT_EQ(agentOf(result.processes[2]), "Codex");
    // Both are alive: an entry that points at the earlier one is not closed.
    assembler.lineage[{1, 9, 9}] = {"Claude Code", {1, 2, 2}, Confidence::observed, "", Date{1}};
    const auto again = assembler.assemble(
        {process(2, 1, "claude", 2), process(2, 1, "codex", 3), process(9, 2, "zsh", 9)}, {}, Date{}, user);
    EXPECT_EQ(again.processes[2]->attribution->exitedAt, std::nullopt);
}

TEST(SnapshotAssembler, GroupsStandInOneOrderWhateverTheFigures) {
    std::vector<ProcessSample> samples;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<std::pair<std::int32_t, std::optional<double>>> figures{
        {10, std::nullopt}, {9, 0}, {100, 0}, {2'000'000'000, 0}, {7, nan}, {8, infinity}, {11, 3}, {99, 0}};
    for (const auto& [pid, cpu] : figures) {
        samples.push_back(process(pid, 1, "x"));
        samples.back().averageCPU = cpu;
    }
    const auto result = SnapshotAssembler().assemble(std::move(samples), {}, Date{}, user);
    std::vector<std::int32_t> order;
    for (const ApplicationGroup& group : result.groups)
        order.push_back(group.processes[0]->id.pid);
    // By text among equals: "100:" before "2000000000:" before "99:" before "9:", as ':' follows the digits.
    EXPECT_THAT(order, ElementsAre(8, 11, 100, 2'000'000'000, 99, 9, 10, 7));
}

TEST(SnapshotAssembler, ADesktopApplicationTakesItsHelpersAlong) {
    const std::vector<ApplicationDescriptor> applications{
        {"/usr/share/applications/a.desktop", "a", "A", 2, std::nullopt},
        {"/usr/share/applications/a.desktop", "a", "A again", 5, std::nullopt},
        {"/usr/share/applications/gone.desktop", "gone", "Gone", 3, 77},
    };
    const auto result = SnapshotAssembler().assemble(
        {process(2, 1, "a"), process(3, 2, "helper"), process(4, 3, "helper"), process(5, 1, "a")},
        applications, Date{}, user);
    ASSERT_EQ(result.groups.size(), 1U);
    EXPECT_EQ(result.groups[0].id, "app:/usr/share/applications/a.desktop");
    EXPECT_EQ(result.groups[0].subtitle, "4 processes");
    EXPECT_EQ(result.processes[2]->application->pid, 2);
    EXPECT_EQ(result.processes[3]->application->pid, 5) << "two instances of one application are kept apart";
}

} // namespace
} // namespace varnet
