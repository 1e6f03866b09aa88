#include "probes/linux/Listeners.h"
#include "probes/linux/ProcessList.h"
#include "probes/linux/SystemReadings.h"
#include "tests/probes/FixtureKernel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <tuple>
#include <vector>

namespace varnet::probes {

namespace {

using namespace std::string_literals;
using testing::ElementsAre;

class FixtureRoot : public testing::Test {
protected:
    /// The entries of a list; empty when it failed.
    std::span<const VNProcessEntry> list(ListKind kind) {
        VNProcessEntry* entries = nullptr;
        const std::int32_t count = collectProcesses(kernel.root(), kind, &entries);
        list_.reset(entries);
        EXPECT_EQ(count < 0, entries == nullptr);
        return {entries, count < 0 ? 0U : static_cast<std::size_t>(count)};
    }
    std::vector<std::int32_t> pids(ListKind kind) {
        std::vector<std::int32_t> result;
        for (const VNProcessEntry& entry : list(kind))
            result.push_back(entry.pid);
        return result;
    }

    FixtureKernel kernel;

private:
    std::unique_ptr<VNProcessEntry, decltype(&std::free)> list_{nullptr, &std::free};
};

TEST_F(FixtureRoot, listsTellTheSameInTheirWays) {
    kernel.put({.pid = 2, .parent = 0, .uid = 0, .kernelFlags = 0x208040, .anonymousKilobytes = {}});
    FixtureProcess odd{.pid = 70, .name = "a) S (b", .startTicks = 1234};
    odd.anonymousKilobytes = 100;
    odd.swappedKilobytes = 28;
    kernel.put(odd);
    const auto full = list(ListKind::full);
    ASSERT_EQ(full.size(), 2U);
    EXPECT_EQ(full[0].flags, static_cast<std::uint32_t>(VN_FLAG_SYSTEM));
    EXPECT_EQ(full[0].hasUsage, 1);
    EXPECT_EQ(full[0].memory, 0U);
    const VNProcessEntry worker = full[1];
    EXPECT_EQ(worker.pid, 70);
    EXPECT_EQ(worker.parent, 1);
    EXPECT_EQ(worker.uid, 1000U);
    EXPECT_EQ(worker.flags, 0U);
    EXPECT_EQ(worker.start, FixtureKernel::bootSeconds * 1'000'000 + 12'340'000);
    EXPECT_EQ(worker.cpu, 1'000'000U);
    EXPECT_EQ(worker.memory, 128U * 1024);
    EXPECT_EQ(worker.wakeups, 7U);
    EXPECT_STREQ(worker.name, "a) S (b");
    EXPECT_STREQ(worker.path, "/usr/bin/worker");

    const auto graph = list(ListKind::graph);
    ASSERT_EQ(graph.size(), 2U);
    EXPECT_EQ(graph[1].start, worker.start);
    EXPECT_EQ(graph[1].uid, worker.uid);
    EXPECT_STREQ(graph[1].name, worker.name);
    EXPECT_STREQ(graph[1].path, "");
    EXPECT_EQ(graph[1].cpu + graph[1].memory + graph[1].wakeups, 0U);
    EXPECT_EQ(graph[1].hasUsage, 0);
    kernel.put({.pid = 70, .name = std::string(100, 'n')});
    EXPECT_EQ(list(ListKind::graph)[1].name, std::string(VN_NAME_SIZE - 1, 'n')) << "cut to its room";
}

TEST_F(FixtureRoot, oneOddProcessDoesNotSinkTheList) {
    kernel.put({.pid = 10});
    std::filesystem::create_directories(kernel.processFolder(11)); // vanished between listing and reading
    kernel.put({.pid = 12});
    std::filesystem::remove(kernel.processFolder(12) / "status"); // vanished between its two files
    kernel.put({.pid = 13});
    kernel.write("proc/13/stat", "13 (cut");
    kernel.put({.pid = 14, .state = 'Z', .anonymousKilobytes = {}}); // not collected yet
    kernel.put({.pid = 15, .state = 'Z', .threads = 2});             // its main thread has ended, it has not
    kernel.put({.pid = 16});
    kernel.write("proc/16/stat", "99 (another) S 1 1 1 0 -1 0 1 2 3 4 5 6 0 0 20 0 1 0 5"); // not this one's
    kernel.write("proc/uptime", "1 1\n");
    kernel.write("proc/17x/stat", "17 (no number) S 1");
    kernel.put({.pid = 9000});
    for (const ListKind kind : {ListKind::full, ListKind::graph}) {
        EXPECT_THAT(pids(kind), ElementsAre(10, 15, 9000));
    }
}

TEST_F(FixtureRoot, refusedUsageKeepsTheProcessAndItsName) {
    // A folder in place of the file can be opened and not read, also by the superuser.
    kernel.put({.pid = 10, .name = "guarded"});
    std::filesystem::remove(kernel.processFolder(10) / "status");
    std::filesystem::create_directories(kernel.processFolder(10) / "status");
    kernel.put({.pid = 11, .name = "nonsense"});
    kernel.write("proc/11/status", "Tgid:\t11\nUid:\t1\t1000\t1\t1\nVmRSS:\t1 kB\nRssAnon:\t? kB\n");
    const auto entries = list(ListKind::full);
    ASSERT_EQ(entries.size(), 2U);
    for (const VNProcessEntry& entry : entries) {
        EXPECT_EQ(entry.hasUsage, 0);
        EXPECT_EQ(entry.cpu + entry.memory + entry.wakeups, 0U);
        EXPECT_STREQ(entry.path, "/usr/bin/worker");
    }
    EXPECT_STREQ(entries[0].name, "guarded");
    EXPECT_STREQ(entries[1].name, "nonsense");

    std::uint64_t start = 0;
    std::uint32_t uid = 0;
    EXPECT_EQ(identity(kernel.root(), 10, &start, &uid), -1) << "whose it is cannot be told for certain";
    EXPECT_EQ(identity(kernel.root(), 11, &start, &uid), 0);
    EXPECT_EQ(uid, 1000U);
}

TEST_F(FixtureRoot, processTableThatCannotBeRead) {
    EXPECT_TRUE(list(ListKind::full).empty());
    std::filesystem::remove_all(kernel.root().proc);
    EXPECT_TRUE(list(ListKind::full).empty());
}

TEST_F(FixtureRoot, executablePaths) {
    const std::string onDisk = kernel.root().sys + "/really called (deleted)";
    kernel.write("sys/really called (deleted)", "");
    using Row = std::tuple<const char*, std::string, std::size_t, std::string>;
    for (const auto& [oddity, link, size, expected] : std::vector<Row>{
             {"usual", "/usr/bin/a", 100, "/usr/bin/a"},
             {"replaced while it runs", "/no/such/a (deleted)", 100, "/no/such/a"},
             {"really called so", onDisk, 4096, onDisk},
             {"replaced and called so", onDisk + " (deleted)", 4096, onDisk},
             {"cut to the buffer", "/usr/bin/abc", 5, "/usr"},
             {"cut inside what is dropped", "/no/such/a (deleted)", 13, "/no/such/a"},
             {"just fits", "/usr", 5, "/usr"},
             {"room for the NUL only", "/usr", 1, ""},
             {"not UTF-8", "/\xff\xfe", 100, "/\xff\xfe"},
         }) {
        SCOPED_TRACE(oddity);
        kernel.put({.pid = 10, .exe = link});
        kernel.link("proc/10/cwd", link);
        std::vector<char> buffer(size + 1, '#');
        EXPECT_EQ(path(kernel.root(), 10, buffer.data(), size), 0);
        EXPECT_STREQ(buffer.data(), expected.c_str());
        EXPECT_EQ(buffer[size], '#');
        EXPECT_EQ(cwd(kernel.root(), 10, buffer.data(), size), 0);
        EXPECT_STREQ(buffer.data(), expected.c_str());
    }
    char buffer[8] = "before";
    std::filesystem::remove(kernel.processFolder(10) / "exe");
    EXPECT_EQ(path(kernel.root(), 10, buffer, sizeof buffer), -1) << "a kernel thread's";
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(path(kernel.root(), 11, buffer, sizeof buffer), -1);
    EXPECT_EQ(cwd(kernel.root(), 11, buffer, sizeof buffer), -1);
    EXPECT_EQ(path(kernel.root(), 10, buffer, 0), -1);
}

TEST_F(FixtureRoot, argumentBlocks) {
    kernel.put({.pid = 10});
    std::vector<char> buffer(400'000);
    const auto lengthOf = [&](const std::string& block) {
        kernel.write("proc/10/cmdline", block);
        return arguments(kernel.root(), 10, buffer.data(), buffer.size()) == 0
                   ? static_cast<std::int64_t>(std::string_view(buffer.data()).size())
                   : -1;
    };
    const std::string full(262'141, 'a');
    EXPECT_EQ(lengthOf(""), 0) << "a kernel thread's";
    EXPECT_EQ(lengthOf(full + "\0b\0"s.substr(0, 2)), 262'143)
        << "as much as is ever read, ending without a NUL";
    EXPECT_EQ(lengthOf(full + "\0b\0"s), 262'143) << "as much as is ever read";
    EXPECT_EQ(lengthOf(full + "\0bc\0"s), 262'141) << "one byte more: the last argument is not whole";
    EXPECT_EQ(lengthOf(full + "aaaa\0"s), 0) << "not even the first is whole";
    EXPECT_EQ(lengthOf("x\0"s + std::string(300'000, '\0')), 1);
    std::filesystem::remove(kernel.processFolder(10) / "cmdline");
    EXPECT_EQ(arguments(kernel.root(), 10, buffer.data(), buffer.size()), -1);
    EXPECT_EQ(arguments(kernel.root(), 11, buffer.data(), buffer.size()), -1);
}

class FixtureMachine : public FixtureRoot {
protected:
    void writeMemory(const std::string& more) const {
        kernel.write("proc/meminfo", "MemTotal: 9999 kB\nAnonPages: 1 kB\nShmem: 2 kB\nSUnreclaim: 4 kB\n"
                                     "KernelStack: 8 kB\nPageTables: 16 kB\n" +
                                         more);
    }
    VNSystemMemory memory() const {
        VNSystemMemory result;
        std::memset(&result, 0x5a, sizeof result); // whatever the caller left there
        systemMemory(kernel.root(), &result);
        return result;
    }
    std::string modelText(std::size_t size) const {
        std::vector<char> buffer(size + 1, '#');
        const std::int32_t failed = model(kernel.root(), buffer.data(), size);
        EXPECT_EQ(buffer[size], '#');
        return failed != 0 ? "-1" : buffer.data();
    }
};

TEST_F(FixtureMachine, memory) {
    const VNSystemMemory none = memory();
    EXPECT_TRUE(none.hasSwap == 0 && none.hasCompressed == 0 && none.hasUsed == 0);
    writeMemory("SwapTotal: 100 kB\nSwapFree: 60 kB\nZswap: 3 kB\n");
    VNSystemMemory answer = memory();
    EXPECT_TRUE(answer.hasSwap == 1 && answer.hasCompressed == 1 && answer.hasUsed == 1);
    EXPECT_EQ(answer.swapUsed, 40U * 1024);
    EXPECT_EQ(answer.compressed, 3U * 1024);
    EXPECT_EQ(answer.used, 34U * 1024);

    kernel.write("sys/block/zram0/mm_stat", "9000 3000 4096 0 8192 5 0 0 0\n");
    kernel.write("sys/block/zram1/mm_stat", "9000 3000 1024 0 8192 5 0 0 0\n");
    kernel.write("sys/block/sda/mm_stat", "9000 3000 77777 0 8192 5 0 0 0\n");
    answer = memory();
    EXPECT_EQ(answer.compressed, 8U * 1024) << "both kinds of compression, every disk";
    EXPECT_EQ(answer.used, 39U * 1024);

    kernel.write("sys/block/zram1/mm_stat", "nonsense\n");
    answer = memory();
    EXPECT_TRUE(answer.hasSwap == 1 && answer.hasCompressed == 0 && answer.hasUsed == 0);
}

TEST_F(FixtureMachine, memoryOfKernelThatDoesNotListItsCompressedCache) {
    writeMemory("");
    EXPECT_EQ(memory().used, 31U * 1024) << "has no such cache";
    kernel.write("sys/module/zswap/parameters/enabled", "N\n");
    EXPECT_EQ(memory().hasUsed, 1) << "has it off";
    kernel.write("sys/module/zswap/parameters/enabled", "Y\n");
    EXPECT_TRUE(memory().hasCompressed == 0 && memory().hasUsed == 0)
        << "has it on, and does not tell its size";
}

TEST_F(FixtureMachine, ticksThatCannotBeRead) {
    VNCPUTicks ticks{};
    EXPECT_EQ(cpuTicks(kernel.root(), &ticks), -1);
}

TEST_F(FixtureMachine, modelNames) {
    EXPECT_EQ(modelText(64), "-1");
    kernel.write("sys/firmware/devicetree/base/model", "Board 4 Rev 1.2\0"s);
    EXPECT_EQ(modelText(64), "Board 4 Rev 1.2");
    kernel.write("sys/class/dmi/id/product_name", " \n");
    EXPECT_EQ(modelText(64), "Board 4 Rev 1.2") << "a blank one is none";
    kernel.write("sys/class/dmi/id/product_name", "  Laptop 15 \n");
    EXPECT_EQ(modelText(64), "Laptop 15");
    EXPECT_EQ(modelText(4), "Lap");
    EXPECT_EQ(modelText(0), "-1");
}

class FixtureSockets : public FixtureRoot {
protected:
    FixtureSockets() {
        kernel.write("proc/self/ns/net", "");
        namespaceOf("self", "ours");
        kernel.write("proc/self/net/tcp", table({{500, "1F90"}, {501, "1F91"}}));
        kernel.write("proc/self/net/tcp6", table({{502, "1F90"}}));
        kernel.put({.pid = 10});
        namespaceOf("10", "ours");
    }
    /// The link to a namespace leads to a file of its own, whose number is the namespace's.
    void namespaceOf(const std::string& process, const std::string& name) const {
        kernel.write("sys/namespaces/" + name, "");
        kernel.link("proc/" + process + "/ns/net", kernel.root().sys + "/namespaces/" + name);
    }
    static std::string table(const std::vector<std::pair<int, std::string>>& rows) {
        std::string text = "  sl  local_address rem_address st\n";
        for (const auto& [inode, port] : rows) {
            text += "   0: 0100007F:" + port +
                    " 00000000:0000 0A 00000000:00000000 00:00000000 00000000 0 0 " + std::to_string(inode) +
                    " 1\n";
        }
        return text;
    }
    std::int32_t ports(std::int32_t pid, std::int32_t capacity = 8) {
        found.fill(0);
        const auto listeners = Listeners::open(kernel.root());
        return listeners ? listeners->ports(pid, found.data(), capacity) : -2;
    }

    std::array<std::uint16_t, 8> found{};
};

TEST_F(FixtureSockets, portsFromTheTextTables) {
    kernel.link("proc/10/fd/0", "/dev/null");
    kernel.link("proc/10/fd/3", "socket:[500]");
    kernel.link("proc/10/fd/4", "socket:[999]");
    kernel.link("proc/10/fd/5", "socket:[502]"); // the same port over IPv6
    kernel.link("proc/10/fd/6", "socket:[500]"); // the same socket twice
    EXPECT_EQ(ports(10), 1);
    EXPECT_EQ(found[0], 8080);
    kernel.link("proc/10/fd/7", "socket:[501]");
    EXPECT_EQ(ports(10), 2);
    EXPECT_EQ(ports(10, 1), 1);
    EXPECT_EQ(found[1], 0) << "past the capacity";
    EXPECT_EQ(ports(10, 0), 0);
    EXPECT_EQ(ports(10, -1), 0);
    EXPECT_EQ(ports(11), -1) << "no such process";

    std::filesystem::remove(kernel.root().proc + "/self/net/tcp6");
    EXPECT_EQ(ports(10), 2) << "a kernel without IPv6";
    std::filesystem::remove(kernel.root().proc + "/self/net/tcp");
    EXPECT_EQ(ports(10), -2) << "a kernel that tells nothing";
}

TEST_F(FixtureSockets, processInAnotherNetworkNamespace) {
    for (const char* const pid : {"10", "11", "12"})
        namespaceOf(pid, "container");
    kernel.write("proc/10/net/tcp", table({{500, "0050"}})); // the number may mean another socket there
    kernel.link("proc/10/fd/3", "socket:[500]");
    EXPECT_EQ(ports(10), 1);
    EXPECT_EQ(found[0], 80);

    kernel.link("proc/11/fd/3", "socket:[500]");
    EXPECT_EQ(ports(11), -1) << "its table cannot be read";
    const auto listeners = Listeners::open(kernel.root());
    ASSERT_TRUE(listeners);
    EXPECT_EQ(listeners->ports(10, found.data(), 8), 1);
    EXPECT_EQ(listeners->ports(11, found.data(), 8), 1) << "the neighbour's table is the same";
    EXPECT_EQ(found[0], 80);
}

TEST_F(FixtureSockets, namespaceThatIsNotShown) {
    std::filesystem::remove_all(kernel.processFolder(10) / "ns");
    kernel.link("proc/10/fd/3", "socket:[501]");
    EXPECT_EQ(ports(10), 1);
    EXPECT_EQ(found[0], 8081);
}

} // namespace

} // namespace varnet::probes
