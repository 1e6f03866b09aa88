#include "tests/VarnetApp/Engine/EngineFixture.h"

#include <cerrno>
#include <functional>

namespace varnet {
namespace {

using Optional = std::optional<double>;

constexpr std::uint64_t second = 1'000'000'000; // of CPU time

using MonitorEngineTest = EngineFixture;

TEST_F(MonitorEngineTest, beforeTheFirstPassNothingIsKnown) {
    probes.tableFails = true;
    const auto snapshot = sample();
    EXPECT_EQ(snapshot->error, "Process measurements are unavailable. Last successful update is shown.");
    EXPECT_EQ(snapshot->logicalCores, 8);
    EXPECT_EQ(snapshot->physicalMemory, 0U);
    EXPECT_EQ(snapshot->fans.availability, FanAvailability::unavailable);
    EXPECT_TRUE(snapshot->processes.empty());
}

TEST_F(MonitorEngineTest, visibleCallsOneSecondApartMeasureEverySecondTime) {
    add(10, "a");
    const auto first = sample();
    EXPECT_EQ(sampleAfter(1), first);
    const auto next = sampleAfter(1);
    EXPECT_NE(next, first);
    EXPECT_EQ(next->date - first->date, 2);
    EXPECT_EQ(probes.calls.fullTables, 2);
    EXPECT_EQ(probes.calls.graphTables, 0);
}

TEST_F(MonitorEngineTest, hiddenPassesKeepTheFiguresOfTheLastMetricPass) {
    FakeProcess& busy = add(10, "busy");
    sample(false);
    *busy.cpu += 5 * second;
    busy.memory = 77;
    const auto measured = sampleAfter(5, false);
    ASSERT_EQ(process(measured, 10)->cpu, Optional(100));
    *busy.cpu += 2 * second;
    busy.memory = 99;
    for (int passes = 0; passes < 2; ++passes) {
        const auto table = sampleAfter(2, false);
        EXPECT_GT(table->date, measured->date);
        EXPECT_EQ(process(table, 10)->cpu, Optional(100));
        EXPECT_EQ(process(table, 10)->averageCPU, Optional(100));
        EXPECT_EQ(process(table, 10)->memory, 77U);
        EXPECT_EQ(process(table, 10)->executable, "/usr/bin/busy");
    }
    EXPECT_EQ(probes.calls.graphTables, 2);
    EXPECT_EQ(process(sampleAfter(1, false), 10)->memory, 99U);
    EXPECT_EQ(probes.calls.paths, 0) << "a known executable is not read again";
}

TEST_F(MonitorEngineTest, cpuIsAShareOfTheTimeBetweenMetricPasses) {
    struct Row {
        const char* name;
        std::int64_t added; // nanoseconds of CPU time within 2 s
        Optional cpu;
        Optional average;
    };
    const Row rows[] = {
        {"half a core", static_cast<std::int64_t>(second), 50, 50},
        {"idle", 0, 0, 0},
        {"more than all cores is cut", static_cast<std::int64_t>(50 * second), 400, 400},
        {"a counter that went back", -1, std::nullopt, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        engine->resetAfterSleep();
        FakeProcess& subject = add(10, "subject");
        subject.cpu = 100 * second;
        EXPECT_EQ(process(sampleAfter(2), 10)->cpu, std::nullopt) << "on first sight";
        subject.cpu = static_cast<std::uint64_t>(static_cast<std::int64_t>(100 * second) + row.added);
        const auto sampled = process(sampleAfter(2), 10);
        EXPECT_EQ(sampled->cpu, row.cpu);
        EXPECT_EQ(sampled->averageCPU, row.average);
    }
}

TEST_F(MonitorEngineTest, unreadableUsageIsUnknownAndComesBack) {
    FakeProcess& subject = add(10, "subject");
    sample();
    *subject.cpu += second;
    ASSERT_EQ(process(sampleAfter(2), 10)->averageCPU, Optional(50));
    subject.cpu.reset();
    const auto hidden = process(sampleAfter(2), 10);
    EXPECT_EQ(hidden->cpu, std::nullopt);
    EXPECT_EQ(hidden->averageCPU, std::nullopt);
    EXPECT_EQ(hidden->memory, std::nullopt);
    EXPECT_EQ(hidden->energyImpact, std::nullopt);
    subject.cpu = 3 * second;
    EXPECT_EQ(process(sampleAfter(2), 10)->cpu, Optional(50))
        << "2 s of CPU within the 4 s since it was read";
}

TEST_F(MonitorEngineTest, pidReuseKeepsMeasurementsApart) {
    FakeProcess& first = add(10, "first");
    first.cpu = 100 * second;
    sample();
    sampleAfter(2);
    probes.processes.erase(10);
    FakeProcess& heir = add(10, "first");
    heir.start += 1;
    heir.cpu = 200 * second;
    EXPECT_EQ(process(sampleAfter(2), 10)->cpu, std::nullopt);
}

TEST_F(MonitorEngineTest, longSilenceForgetsWhatWasMeasured) {
    for (const double gap : {15.0, 16.0}) {
        SCOPED_TRACE(gap);
        FakeProcess& subject = add(10, "subject");
        probes.ticks = VNCPUTicks{1, 1, 1, 1};
        engine->resetAfterSleep();
        sample();
        *subject.cpu += second;
        probes.ticks = VNCPUTicks{2, 2, 2, 2};
        const auto after = sampleAfter(gap);
        EXPECT_EQ(process(after, 10)->cpu.has_value(), gap <= 15);
        EXPECT_EQ(after->systemCPU.has_value(), gap <= 15);
    }
}

TEST_F(MonitorEngineTest, failedTableKeepsTheLastGoodPicture) {
    add(10, "a");
    probes.memory = {
        .compressed = 1, .swapUsed = 2, .used = 3, .hasCompressed = 1, .hasSwap = 1, .hasUsed = 1};
    const auto good = sample();
    probes.tableFails = true;
    const auto failed = sampleAfter(2);
    EXPECT_TRUE(failed->error);
    EXPECT_EQ(failed->processes, good->processes);
    EXPECT_EQ(failed->groups.size(), good->groups.size());
    EXPECT_EQ(failed->systemMemory, SystemMemorySnapshot{});
    EXPECT_EQ(failed->date - good->date, 2);
    probes.tableFails = false;
    const auto recovered = sampleAfter(1);
    EXPECT_FALSE(recovered->error) << "a failed pass must not use up the metric interval";
    EXPECT_EQ(recovered->systemMemory.usedRAM, 3U);
}

TEST_F(MonitorEngineTest, machineCPUSurvivesWrappingAndBackwardCounters) {
    constexpr std::uint64_t wrap = std::uint64_t{1} << 32U;
    struct Row {
        const char* name;
        VNCPUTicks before;
        VNCPUTicks after;
        Optional percent;
    };
    const Row rows[] = {
        {"a quarter", {0, 0, 0, 0}, {10, 10, 75, 5}, 25},
        {"nothing moved", {5, 5, 5, 5}, {5, 5, 5, 5}, std::nullopt},
        {"user wrapped at 32 bits", {wrap - 10, 0, 0, 0}, {0, 0, 30, 0}, 25},
        {"counters of 64 bits", {wrap + 10, 0, wrap, 0}, {wrap + 20, 0, wrap + 30, 0}, 25},
        {"idle stepped back under full load", {0, 0, 100, 0}, {200, 0, 98, 0}, 100},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        engine->resetAfterSleep();
        probes.ticks = row.before;
        EXPECT_EQ(sampleAfter(2)->systemCPU, std::nullopt);
        const std::size_t points = sample()->history.size();
        probes.ticks = row.after;
        const auto snapshot = sampleAfter(2);
        EXPECT_EQ(snapshot->systemCPU, row.percent);
        EXPECT_EQ(snapshot->history.size(), points + (row.percent ? 1 : 0));
    }
    probes.ticks.reset();
    EXPECT_EQ(sampleAfter(2)->systemCPU, std::nullopt);
}

TEST_F(MonitorEngineTest, machineHistoryReachesBackFifteenMinutes) {
    VNCPUTicks ticks{};
    Snapshot snapshot;
    for (int i = 0; i < 500; ++i) {
        ticks.user += 1;
        ticks.idle += 1;
        probes.ticks = ticks;
        snapshot = sampleAfter(2);
    }
    ASSERT_EQ(snapshot->history.size(), 451U);
    EXPECT_EQ(snapshot->date - snapshot->history.front().date, 900);
}

TEST_F(MonitorEngineTest, impossibleMemoryIsUnknown) {
    probes.memory = {.compressed = 1,
                     .swapUsed = 2,
                     .used = probes.ram + 1,
                     .hasCompressed = 1,
                     .hasSwap = 0,
                     .hasUsed = 1};
    const auto memory = sample()->systemMemory;
    EXPECT_EQ(memory.usedRAM, std::nullopt);
    EXPECT_EQ(memory.compressed, 1U);
    EXPECT_EQ(memory.swapUsed, std::nullopt);
}

TEST_F(MonitorEngineTest, systemProcessesAreToldByFlagUserAndFolder) {
    add(10, "mine");
    add(11, "kernel").flags = VN_FLAG_SYSTEM;
    add(12, "other").uid = 0;
    add(13, "daemon").path = "/usr/sbin/daemon";
    add(14, "helper").path = "/usr/libexec/helper";
    const auto snapshot = sample();
    for (const auto& [pid, system] :
         std::map<int, bool>{{10, false}, {11, true}, {12, true}, {13, true}, {14, true}}) {
        EXPECT_EQ(process(snapshot, pid)->isSystem, system) << pid;
    }
}

TEST_F(MonitorEngineTest, onlyOwnDevelopmentProcessesAreReadInDepth) {
    const std::string checkout = makeCheckout("shop");
    FakeProcess& server = add(20, "node");
    server.arguments = "node\t/app/vite.js\t";
    server.cwd = checkout;
    server.ports = {{5173}};
    add(21, "editor").arguments = "editor";
    FakeProcess& foreign = add(22, "node");
    foreign.uid = 0;
    foreign.arguments = "node\tsecret";
    foreign.cwd = checkout;

    const auto snapshot = sample();
    const auto node = process(snapshot, 20);
    EXPECT_EQ(node->arguments.list(), (std::vector<std::string>{"node", "/app/vite.js", ""}));
    EXPECT_EQ(node->ports, std::vector<int>{5173});
    ASSERT_TRUE(node->project);
    EXPECT_EQ(node->project->worktree, "main");
    EXPECT_EQ(process(snapshot, 21)->arguments.list(), std::vector<std::string>{"editor"});
    EXPECT_FALSE(process(snapshot, 21)->cwd);
    EXPECT_TRUE(process(snapshot, 22)->arguments.empty());
    EXPECT_FALSE(process(snapshot, 22)->cwd);
    EXPECT_EQ(probes.calls.arguments, 2);
    EXPECT_EQ(probes.calls.cwds, 1);
    EXPECT_EQ(probes.calls.ports, 1);
    ASSERT_EQ(snapshot->services.size(), 1U);
    EXPECT_EQ(snapshot->services[0].name(), "Vite");
}

TEST_F(MonitorEngineTest, slowFactsAreReadEveryTenSeconds) {
    FakeProcess& server = add(20, "node");
    server.arguments = "node\tserver.js";
    server.cwd = makeCheckout("a");
    server.ports.reset();
    EXPECT_FALSE(process(sample(), 20)->portsAvailable);
    server.ports = {{3000}};
    server.cwd = makeCheckout("b");
    server.arguments = "changed";
    EXPECT_FALSE(process(sampleAfter(8), 20)->portsAvailable);
    const auto later = process(sampleAfter(2), 20);
    EXPECT_EQ(later->ports, std::vector<int>{3000});
    EXPECT_EQ(later->project->name, "b");
    EXPECT_EQ(later->arguments.list().front(), "node") << "arguments once delivered are not read again";
    server.cwd.reset();
    EXPECT_FALSE(process(sampleAfter(10), 20)->project) << "a folder that cannot be read is no folder";
}

TEST_F(MonitorEngineTest, argumentsAreAskedForUntilTheyCome) {
    FakeProcess& subject = add(20, "python3");
    subject.arguments.reset();
    EXPECT_TRUE(process(sample(), 20)->arguments.empty());
    subject.arguments = ""; // between fork and exec
    EXPECT_TRUE(process(sampleAfter(10), 20)->arguments.empty());
    subject.arguments = "python3\tmanage.py";
    EXPECT_EQ(process(sampleAfter(10), 20)->framework(), "Django");
}

TEST_F(MonitorEngineTest, anotherImageIsReadAnew) {
    const std::string checkout = makeCheckout("shop");
    FakeProcess& subject = add(20, "node");
    subject.arguments = "node\tvite";
    subject.cwd = checkout;
    ASSERT_TRUE(process(sample(), 20)->project);
    subject.name = "sleep";
    subject.path = "/usr/bin/sleep";
    subject.arguments = "sleep\t9";
    const auto after = process(sampleAfter(2), 20);
    EXPECT_EQ(after->arguments.list().front(), "sleep");
    EXPECT_FALSE(after->project);
    EXPECT_FALSE(after->cwd);
}

TEST_F(MonitorEngineTest, processInsideAProjectHasItsPortsRead) {
    FakeProcess& shell = add(20, "node");
    shell.cwd = makeCheckout("shop");
    FakeProcess& helper = add(21, "helper", 20);
    helper.ports = {{9229}};
    EXPECT_TRUE(process(sample(), 21)->project) << "inherited from its parent";
    EXPECT_EQ(process(sampleAfter(2), 21)->ports, std::vector<int>{9229});
}

TEST_F(MonitorEngineTest, namesThatAreNoTextAreShownRepaired) {
    add(20, "x").name = "bad\xFF\xC3name";
    EXPECT_EQ(process(sample(), 20)->name, "bad\xEF\xBF\xBD\xEF\xBF\xBDname");
}

TEST_F(MonitorEngineTest, agentThatExitsIsNoticed) {
    const auto hide = [this](std::int32_t answer) {
        probes.processes.erase(30);
        probes.existsAnswers[30] = answer;
    };
    struct Row {
        const char* name;
        std::function<void()> change;
        bool exited;
    };
    const Row rows[] = {
        {"gone", [&] { probes.processes.erase(30); }, true},
        {"its pid is somebody else's", [&] { ++add(30, "heir").start; }, true},
        {"missed by the table but alive", [&] { probes.processes[30].listed = false; }, false},
        {"out of reach", [&] { hide(EPERM); }, false},
        {"unreadable but there", [&] { hide(0); }, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        probes.processes.clear();
        probes.existsAnswers.clear();
        engine->clearHistory();
        engine->resetAfterSleep();
        add(30, "claude");
        FakeProcess& server = add(31, "node", 30);
        server.ports = {{3000}};
        const auto before = process(sampleAfter(2), 31)->attribution;
        ASSERT_TRUE(before);
        EXPECT_EQ(before->agent, "Claude Code");
        EXPECT_FALSE(before->exitedAt);

        row.change();
        server.parent = 1;
        const auto after = sampleAfter(2);
        EXPECT_EQ(process(after, 31)->attribution->exitedAt,
                  row.exited ? std::optional(after->date) : std::nullopt);
    }
}

} // namespace
} // namespace varnet
