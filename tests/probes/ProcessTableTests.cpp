#include "probes/linux/ProcessTable.h"
#include "tests/probes/FixtureKernel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace varnet::probes {

namespace {

using testing::ElementsAre;

class ProcessTableTest : public testing::Test {
protected:
    std::span<const VNTableEntry> read(ListKind kind = ListKind::full) {
        const VNTableEntry* entries = nullptr;
        const std::int32_t count = table.read(kind, seconds, &entries);
        EXPECT_EQ(count < 0, entries == nullptr);
        list = {entries, count < 0 ? 0U : static_cast<std::size_t>(count)};
        return list;
    }
    std::vector<std::int32_t> pids() const {
        std::vector<std::int32_t> result;
        for (const VNTableEntry& entry : list)
            result.push_back(entry.pid);
        return result;
    }
    const VNTableEntry& entry(std::int32_t pid) const {
        static const VNTableEntry none{};
        const auto found = std::ranges::find(list, pid, &VNTableEntry::pid);
        EXPECT_NE(found, list.end()) << pid;
        return found == list.end() ? none : *found;
    }

    FixtureKernel kernel;
    ProcessTable table{kernel.root()};
    double seconds = 1000;
    std::span<const VNTableEntry> list;
};

TEST_F(ProcessTableTest, readsOnlyWhatHasRun) {
    kernel.put({.pid = 1, .name = "init", .parent = 0});
    kernel.put({.pid = 10});
    kernel.put({.pid = 11});
    read();
    EXPECT_EQ(table.readAnew(), 3U);
    EXPECT_EQ(entry(10).start, FixtureKernel::bootSeconds * 1'000'000 + 10'000'000);
    EXPECT_STREQ(entry(10).path, "/usr/bin/worker");

    read();
    EXPECT_EQ(table.readAnew(), 0U);
    EXPECT_EQ(entry(10).cpu, 1'000'000U);

    kernel.run({.pid = 10, .name = "renamed", .uid = 1001, .wakeups = 8});
    read();
    EXPECT_EQ(table.readAnew(), 1U);
    EXPECT_STREQ(entry(10).name, "renamed");
    EXPECT_EQ(entry(10).uid, 1001U);
    EXPECT_EQ(entry(10).wakeups, 8U);
    EXPECT_EQ(entry(10).cpu, 1'001'000U);
    EXPECT_STREQ(entry(11).name, "worker");
}

TEST_F(ProcessTableTest, comesAndGoes) {
    kernel.put({.pid = 1, .parent = 0});
    kernel.put({.pid = 20});
    read();
    kernel.put({.pid = 10});
    kernel.put({.pid = 30});
    read();
    EXPECT_THAT(pids(), ElementsAre(1, 10, 20, 30));
    EXPECT_EQ(table.readAnew(), 2U);
    kernel.run({.pid = 20, .state = 'Z', .anonymousKilobytes = {}});
    kernel.remove(10);
    std::filesystem::remove(kernel.processFolder(30) / "stat"); // going just now
    kernel.run({.pid = 1, .parent = 0});
    read();
    EXPECT_THAT(pids(), ElementsAre(1, 30)) << "what has not run is not looked at";
    read();
    EXPECT_EQ(table.readAnew(), 0U) << "one that waits to be collected is not read again and again";
    kernel.remove(30);
    read();
    EXPECT_THAT(pids(), ElementsAre(1));
}

TEST_F(ProcessTableTest, listsAnewOnlyWhenSomethingCanHaveBegun) {
    const auto newestPid = [this](int pid) {
        kernel.write("proc/loadavg", "0.10 0.20 0.30 1/99 " + std::to_string(pid) + "\n");
    };
    newestPid(20);
    kernel.put({.pid = 1, .parent = 0});
    kernel.put({.pid = 20});
    read();
    kernel.put({.pid = 10}); // restored from a checkpoint: nothing tells of it
    read();
    EXPECT_THAT(pids(), ElementsAre(1, 20)) << "nothing has begun, so nothing is listed";
    kernel.remove(20);
    read();
    EXPECT_THAT(pids(), ElementsAre(1)) << "an end is seen without a listing";
    kernel.put({.pid = 20, .name = "heir", .startTicks = 3000});
    read();
    EXPECT_THAT(pids(), ElementsAre(1, 20)) << "a pid given away again without the newest one moving";
    EXPECT_STREQ(entry(20).name, "heir");
    seconds += 10;
    read();
    EXPECT_THAT(pids(), ElementsAre(1, 10, 20)) << "nobody stays unseen for long";
    newestPid(30);
    kernel.put({.pid = 30});
    read();
    EXPECT_THAT(pids(), ElementsAre(1, 10, 20, 30));
    kernel.write("proc/loadavg", "nonsense");
    kernel.put({.pid = 31});
    read();
    EXPECT_THAT(pids(), ElementsAre(1, 10, 20, 30, 31)) << "without the newest pid every read lists";
}

TEST_F(ProcessTableTest, reusedPidIsAnotherProcess) {
    kernel.put({.pid = 1, .parent = 0});
    kernel.put({.pid = 10, .name = "before", .exe = "/bin/before"});
    read();
    kernel.run({.pid = 10, .name = "after", .uid = 7, .startTicks = 2000, .exe = "/bin/after"});
    read();
    EXPECT_EQ(entry(10).start, FixtureKernel::bootSeconds * 1'000'000 + 20'000'000);
    EXPECT_EQ(entry(10).uid, 7U);
    EXPECT_STREQ(entry(10).name, "after");
    EXPECT_STREQ(entry(10).path, "/bin/after");
}

/// When its parent ends, a process that sleeps is handed on without running.
TEST_F(ProcessTableTest, sleeperIsHandedOn) {
    struct Row {
        const char* oddity;
        void (*endParent)(FixtureKernel&);
    };
    const std::vector<Row> rows{
        {"parent gone", [](FixtureKernel& fixture) { fixture.remove(10); }},
        {"parent waits to be collected",
         [](FixtureKernel& fixture) {
             fixture.run({.pid = 10, .state = 'Z', .startTicks = 500, .anonymousKilobytes = {}});
         }},
        {"parent's pid is a younger process",
         [](FixtureKernel& fixture) { fixture.run({.pid = 10, .startTicks = 3000}); }},
        {"parent's pid is another process of the same age",
         [](FixtureKernel& fixture) { fixture.run({.pid = 10, .startTicks = 900}); }},
        {"parent cannot be read any more",
         [](FixtureKernel& fixture) {
             fixture.run({.pid = 10, .startTicks = 500});
             fixture.write("proc/10/stat", "");
         }},
    };
    for (const Row& row : rows) {
        for (const ListKind kind : {ListKind::full, ListKind::graph}) {
            SCOPED_TRACE(row.oddity);
            kernel.put({.pid = 1, .parent = 0, .startTicks = 1});
            kernel.run({.pid = 10, .startTicks = 500});
            kernel.run({.pid = 20, .parent = 10});
            kernel.run({.pid = 21, .parent = 10});
            read();
            EXPECT_EQ(entry(20).parent, 10);
            row.endParent(kernel);
            kernel.put({.pid = 20, .parent = 1}); // sleeps on
            kernel.put({.pid = 21, .parent = 1});
            read(kind);
            EXPECT_EQ(entry(20).parent, 1);
            EXPECT_EQ(entry(21).parent, 1);
        }
    }
}

TEST_F(ProcessTableTest, orphanThatEndsMeanwhileIsNotListed) {
    kernel.put({.pid = 1, .parent = 0, .startTicks = 1});
    kernel.put({.pid = 10, .startTicks = 500});
    kernel.put({.pid = 20, .parent = 10});
    read();
    kernel.remove(10);
    std::filesystem::remove(kernel.processFolder(20) / "stat");
    read();
    EXPECT_THAT(pids(), ElementsAre(1));
}

TEST_F(ProcessTableTest, pathIsReadOnlyWhenItMayHaveChanged) {
    kernel.put({.pid = 1, .parent = 0});
    kernel.put({.pid = 10, .exe = "/bin/first"});
    read(ListKind::graph);
    EXPECT_STREQ(entry(10).path, "");
    EXPECT_EQ(entry(10).hasUsage, 0);
    EXPECT_EQ(entry(10).cpu + entry(10).memory + entry(10).wakeups, 0U);
    read();
    EXPECT_STREQ(entry(10).path, "/bin/first") << "first full read of a process known from a cheap one";
    EXPECT_EQ(entry(10).hasUsage, 1);
    EXPECT_EQ(table.readAnew(), 0U);

    kernel.link("proc/10/exe", "/bin/unnoticed");
    read();
    EXPECT_STREQ(entry(10).path, "/bin/first") << "it has not run";
    kernel.run({.pid = 10, .name = "worker", .exe = "/bin/second"});
    read(ListKind::graph);
    EXPECT_EQ(table.readAnew(), 1U);
    read();
    EXPECT_EQ(table.readAnew(), 0U);
    EXPECT_STREQ(entry(10).path, "/bin/second") << "another image, noticed by a cheap read";
    kernel.run({.pid = 10, .exe = "/bin/third"});
    std::filesystem::remove(kernel.processFolder(10) / "exe");
    read();
    EXPECT_STREQ(entry(10).path, "") << "no path is better than that of an image before";
}

TEST_F(ProcessTableTest, processWithoutClockIsReadEveryTime) {
    kernel.put({.pid = 1, .parent = 0});
    KernelRoot root = kernel.root();
    root.cpuClock = [](std::int32_t) -> std::optional<std::uint64_t> { return std::nullopt; };
    kernel.put({.pid = 10, .userTicks = 3, .systemTicks = 2});
    ProcessTable clockless(root);
    const VNTableEntry* entries = nullptr;
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(clockless.read(ListKind::full, seconds += 40, &entries), 2);
        EXPECT_EQ(clockless.readAnew(), 2U);
        EXPECT_EQ(entries[1].cpu, 50'000'000U) << "from the ticks then";
    }
    root.cpuClock = nullptr;
    ASSERT_EQ(clockless.read(ListKind::full, seconds += 40, &entries), 2);
    EXPECT_EQ(clockless.readAnew(), 2U);
}

TEST_F(ProcessTableTest, failedReadSaysSoAndRecovers) {
    kernel.put({.pid = 1, .parent = 0});
    read();
    std::filesystem::rename(kernel.root().proc, kernel.root().proc + "-away");
    EXPECT_TRUE(read().empty());
    std::filesystem::rename(kernel.root().proc + "-away", kernel.root().proc);
    read();
    EXPECT_THAT(pids(), ElementsAre(1));
}

/// Sleepers' memory changes under them: how old is what is reported, and what does a pass pay for it?
class MemoryTurns : public ProcessTableTest {
protected:
    static constexpr std::int32_t sleepers = 42;

    void SetUp() override {
        kernel.put({.pid = 1, .parent = 0, .startTicks = 1});
        for (std::int32_t pid = 100; pid < 100 + sleepers; ++pid)
            kernel.put({.pid = pid, .anonymousKilobytes = 0});
        read();
    }
    /// Lets every sleeper hold the present time in kilobytes, so that what is reported tells its age.
    void stampMemory() {
        for (std::int32_t pid = 100; pid < 100 + sleepers; ++pid)
            kernel.putMemory({.pid = pid, .anonymousKilobytes = kilobytes()});
    }
    std::uint64_t kilobytes() const { return static_cast<std::uint64_t>(seconds - 1000) * 4; }
    double oldestReported() const {
        double oldest = 0;
        for (const VNTableEntry& reported : list) {
            if (reported.pid < 100 || reported.pid >= 100 + sleepers) continue;
            oldest = std::max(oldest, static_cast<double>(kilobytes() - reported.memory / 1024) / 4);
        }
        return oldest;
    }
};

TEST_F(MemoryTurns, noneIsReportedOlderThanPromisedAndNoPassPaysForAll) {
    for (const double cadence : {2.0, 5.0, 10.0}) {
        SCOPED_TRACE(cadence);
        double oldest = 0;
        for (double passed = 0; passed < 90; passed += cadence) {
            seconds += cadence;
            stampMemory();
            read();
            EXPECT_LE(table.refreshed(), sleepers * cadence / 28 + 2);
            EXPECT_EQ(table.readAnew(), 0U);
            oldest = std::max(oldest, oldestReported());
        }
        EXPECT_LE(oldest, ProcessTable::memoryRefresh);
        EXPECT_GE(oldest, 15) << "turns that come more often than needed";
    }
}

TEST_F(MemoryTurns, newcomersDoNotDelayTheOthers) {
    std::int32_t newcomer = 5000;
    std::size_t most = 0;
    for (int pass = 0; pass < 25; ++pass) {
        seconds += 2;
        stampMemory();
        for (int i = 0; i < 10; ++i)
            kernel.put({.pid = newcomer++});
        for (int i = 0; i < 7 && pass >= 5; ++i)
            kernel.remove(newcomer - 50 + i);
        read();
        EXPECT_LE(oldestReported(), ProcessTable::memoryRefresh);
        most = std::max(most, table.refreshed());
    }
    EXPECT_LE(most, list.size() / 10) << "spread, not in one pass";
}

TEST_F(MemoryTurns, afterCheapReadsOnlyAllAreDue) {
    for (int pass = 0; pass < 20; ++pass) {
        seconds += 2;
        read(ListKind::graph);
        EXPECT_EQ(table.refreshed(), 0U);
    }
    stampMemory();
    read();
    EXPECT_EQ(oldestReported(), 0);
}

TEST_F(MemoryTurns, swappedMemoryIsFollowedThoughItsPagesStandStill) {
    const auto swap = [&](std::uint64_t swapped) { kernel.put({.pid = 100, .swappedKilobytes = swapped}); };
    std::vector<std::uint64_t> seen;
    for (const std::uint64_t swapped : {8U, 4U, 0U}) {
        swap(swapped);
        for (int pass = 0; pass < 15; ++pass) {
            seconds += 2;
            read();
        }
        seen.push_back(entry(100).memory / 1024);
    }
    EXPECT_THAT(seen, ElementsAre(408, 404, 400));
}

TEST_F(MemoryTurns, turnThatFindsAnotherProcessOrNone) {
    kernel.remove(100);
    std::filesystem::create_directories(kernel.processFolder(101) / "away");
    for (const char* const file : {"stat", "status", "statm"})
        std::filesystem::remove(kernel.processFolder(101) / file);
    std::filesystem::remove(kernel.processFolder(102) / "status");
    std::filesystem::create_directories(kernel.processFolder(102) / "status");
    seconds += 31;
    read();
    EXPECT_EQ(std::ranges::count(pids(), 100), 0);
    EXPECT_EQ(std::ranges::count(pids(), 101), 0) << "ended while the pass went on";
    EXPECT_EQ(entry(102).hasUsage, 0) << "refused from now on";
    EXPECT_EQ(entry(103).hasUsage, 1);
}

/// A pid is given away between the look at its clock and the reading of a sleeper's memory or path.
TEST_F(MemoryTurns, pidGivenAwayWhileItIsLookedAt) {
    static int asked;
    for (const ListKind first : {ListKind::full, ListKind::graph}) {
        asked = -1;
        kernel.put({.pid = 100});
        KernelRoot root = kernel.root();
        root.cpuClock = [](std::int32_t pid) -> std::optional<std::uint64_t> {
            if (pid != 100 || asked < 0) return 1;
            return ++asked == 1 ? 1 : 2;
        };
        ProcessTable watched(root);
        const VNTableEntry* entries = nullptr;
        ASSERT_GT(watched.read(first, seconds, &entries), 1);
        asked = 0;
        kernel.put(
            {.pid = 100, .name = "next", .startTicks = 7000, .anonymousKilobytes = 5, .exe = "/bin/next"});
        ASSERT_GT(watched.read(ListKind::full, seconds + (first == ListKind::full ? 31 : 0), &entries), 1);
        EXPECT_EQ(entries[1].pid, 100);
        EXPECT_EQ(entries[1].start, FixtureKernel::bootSeconds * 1'000'000 + 70'000'000);
        EXPECT_EQ(entries[1].memory, 5U * 1024);
        EXPECT_STREQ(entries[1].name, "next");
        EXPECT_STREQ(entries[1].path, "/bin/next");
    }
}

TEST_F(MemoryTurns, kernelsOwnHaveNone) {
    FixtureKernel& fixture = kernel;
    for (std::int32_t pid = 100; pid < 100 + sleepers; ++pid)
        fixture.run({.pid = pid, .kernelFlags = 0x200000, .anonymousKilobytes = {}});
    read();
    seconds += 31;
    read();
    EXPECT_LE(table.refreshed(), 1U);
}

} // namespace

} // namespace varnet::probes
