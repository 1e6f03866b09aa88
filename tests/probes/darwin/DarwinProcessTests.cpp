#include "probes/vn_probes.h"
#include "tests/probes/darwin/FakeKernel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace varnet::probes {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

struct FreeList {
    void operator()(VNProcessEntry* list) const noexcept { vn_free(list); }
};

struct Listed {
    std::int32_t count = 0;
    std::unique_ptr<VNProcessEntry, FreeList> storage;
    const VNProcessEntry& operator[](std::size_t at) const { return storage.get()[at]; }
};

Listed list(std::int32_t (*collect)(VNProcessEntry**) = vn_processes) {
    VNProcessEntry* entries = nullptr;
    const std::int32_t count = collect(&entries);
    return {count, std::unique_ptr<VNProcessEntry, FreeList>(entries)};
}

rusage_info_v2 usage(std::uint64_t user, std::uint64_t system) {
    rusage_info_v2 usage{};
    usage.ri_user_time = user;
    usage.ri_system_time = system;
    usage.ri_phys_footprint = 4096;
    usage.ri_pkg_idle_wkups = 3;
    return usage;
}

TEST(DarwinProcessList, counts) {
    using Row = std::tuple<const char*, void (*)(FakeKernel&), std::int32_t>;
    for (const auto& [name, prepare, count] : std::vector<Row>{
             {"ended between the two calls", [](FakeKernel& kernel) { kernel.listed.push_back(77); }, 2},
             {"half an answer", [](FakeKernel& kernel) { kernel.processes[8].basicReply = 100; }, 1},
             {"the kernel's own pid", [](FakeKernel& kernel) { kernel.addProcess(0); }, 2},
             {"no number", [](FakeKernel& kernel) { kernel.firstAnswer = 0; }, -1},
             {"list refused", [](FakeKernel& kernel) { kernel.secondAnswer = -1; }, -1},
             {"empty list", [](FakeKernel& kernel) { kernel.secondAnswer = 0; }, 0},
             {"more than it was given room for", [](FakeKernel& kernel) { kernel.secondAnswer = 402; }, 2},
         }) {
        SCOPED_TRACE(name);
        FakeKernel kernel;
        kernel.addProcess(8);
        kernel.addProcess(7);
        prepare(kernel);
        const Listed listed = list();
        EXPECT_EQ(listed.count, count);
        EXPECT_EQ(listed.storage != nullptr, count >= 0); // also an empty list is the caller's to free
    }
}

TEST(DarwinProcessList, fullAndCheap) {
    FakeKernel kernel;
    kernel.timebase = {125, 3};
    FakeProcess& process = kernel.addProcess(8, "node");
    process.basic.pbi_flags = 5;
    process.path = "/usr/bin/node";
    process.usage = usage(3'000, 600);

    const Listed full = list();
    ASSERT_EQ(full.count, 1);
    EXPECT_EQ(full[0].pid, 8);
    EXPECT_EQ(full[0].parent, 1);
    EXPECT_EQ(full[0].uid, getuid());
    EXPECT_EQ(full[0].flags, 5U);
    EXPECT_EQ(full[0].start, 100'000'007U);
    EXPECT_EQ(full[0].cpu, 150'000U);
    EXPECT_EQ(full[0].memory, 4096U);
    EXPECT_EQ(full[0].wakeups, 3U);
    EXPECT_EQ(full[0].hasUsage, 1);
    EXPECT_STREQ(full[0].name, "node");
    EXPECT_STREQ(full[0].path, "/usr/bin/node");

    kernel.usageCalls = 0;
    const Listed graph = list(vn_process_graph);
    ASSERT_EQ(graph.count, 1);
    EXPECT_EQ(graph[0].start, full[0].start);
    EXPECT_STREQ(graph[0].name, "node");
    EXPECT_STREQ(graph[0].path, "");
    EXPECT_EQ(graph[0].hasUsage, 0);
    EXPECT_EQ(kernel.usageCalls, 0);
}

TEST(DarwinProcessList, usage) {
    const std::uint64_t half = std::uint64_t{1} << 63U;
    using Row = std::tuple<const char*, mach_timebase_info_data_t, std::optional<rusage_info_v2>,
                           std::int32_t, std::uint64_t>;
    for (const auto& [name, timebase, told, hasUsage, cpu] : std::vector<Row>{
             {"refused", {1, 1}, std::nullopt, 0, 0},
             {"scale unknown", {0, 0}, usage(1, 1), 0, 0},
             {"sum and product beyond 64 bits", {3, 4}, usage(half, half), 1, half + half / 2},
             {"result cut to 64 bits", {3, 1}, usage(half, 1), 1, half + 3},
         }) {
        SCOPED_TRACE(name);
        FakeKernel kernel;
        kernel.timebase = timebase;
        kernel.addProcess(8, "still named").usage = told;
        const Listed listed = list();
        ASSERT_EQ(listed.count, 1);
        EXPECT_STREQ(listed[0].name, "still named");
        EXPECT_EQ(listed[0].hasUsage, hasUsage);
        EXPECT_EQ(listed[0].cpu, cpu);
    }
}

TEST(DarwinProcessTable, ascendsByPidAndForgetsWhatItCouldNotRead) {
    FakeKernel kernel;
    kernel.addProcess(9, std::string(32, 'x')).usage = usage(1, 0); // fills its field: no NUL
    FakeProcess& shortNamed = kernel.addProcess(8, "");
    std::string(16, 'y').copy(shortNamed.basic.pbi_comm, 16);
    VNTable* const table = vn_table_open();
    const VNTableEntry* entries = nullptr;
    ASSERT_EQ(vn_table_read(table, 1, &entries), 2);
    EXPECT_EQ(entries[0].pid, 8);
    EXPECT_EQ(entries[0].name, std::string(16, 'y'));
    EXPECT_EQ(entries[1].name, std::string(32, 'x'));
    EXPECT_EQ(entries[1].hasUsage, 1);
    kernel.secondAnswer = -1;
    EXPECT_EQ(vn_table_read(table, 1, &entries), -1);
    EXPECT_EQ(entries, nullptr);
    vn_table_close(table);
}

TEST(DarwinProcessTexts, pathAndFolder) {
    FakeKernel kernel;
    FakeProcess& process = kernel.addProcess(8);
    std::array<char, 6> buffer{};
    const auto path = [&] { return vn_path(8, buffer.data(), buffer.size()); };
    const auto cwd = [&] { return vn_cwd(8, buffer.data(), buffer.size()); };
    EXPECT_EQ(path(), -1);
    EXPECT_EQ(cwd(), -1) << "an empty folder is none";
    process.path = process.cwd = "/usr/bin";
    EXPECT_EQ(path(), 0);
    EXPECT_STREQ(buffer.data(), "/usr/");
    buffer = {};
    EXPECT_EQ(cwd(), 0);
    EXPECT_STREQ(buffer.data(), "/usr/");
    process.cwdReply = 1176;
    EXPECT_EQ(cwd(), -1) << "half an answer";
    EXPECT_EQ(vn_path(77, buffer.data(), buffer.size()), -1);
    EXPECT_EQ(vn_cwd(77, buffer.data(), buffer.size()), -1);
}

std::string block(std::int32_t count, const std::string& rest) {
    std::string bytes(sizeof count, '\0');
    std::memcpy(bytes.data(), &count, sizeof count);
    return bytes + rest;
}

struct ArgumentRow {
    const char* name;
    std::string block;
    std::size_t room;
    std::int32_t result;
    std::string text = {};
};

TEST(DarwinProcessTexts, arguments) {
    using namespace std::string_literals;
    const std::string node = "/bin/node\0\0\0\0node\0server.js\0--watch\0HOME=/\0"s;
    const std::string longest(262'144 - 4 - 3 - 1, 'a');
    const std::vector<ArgumentRow> rows = {
        {"as usual; the environment is left out", block(3, node), 64, 0, "node\tserver.js\t--watch"},
        {"no arguments", block(0, node), 64, 0, ""},
        {"path without its end", block(2, "/bin/node"s), 64, 0, ""},
        {"too short to be one", "\1\0\0\0"s, 64, -1},
        {"most that is believed", block(16'384, node), 64, 0, "node\tserver.js\t--watch\tHOME=/"},
        {"corrupt count", block(16'385, node), 64, -1},
        {"count below zero", block(-1, node), 64, -1},
        {"last one cut off by the kernel", block(2, "/bin/node\0node\0serv"s), 64, 0, "node"},
        {"no room for the second", block(3, node), 15, 0, "node"},
        {"room for the second to the byte", block(3, node), 16, 0, "node\tserver.js"},
        {"no room for the first, later ones are not taken", block(2, "/x\0longer\0b\0"s), 8, 0, ""},
        {"no room", block(3, node), 0, -1},
        {"empty one in the middle keeps its place", block(3, "/x\0a\0\0b\0"s), 64, 0, "a\t\tb"},
        {"as long as the kernel gives", block(1, "/x\0"s + longest + '\0'), longest.size() + 3, 0, longest},
    };
    for (const ArgumentRow& row : rows) {
        SCOPED_TRACE(row.name);
        FakeKernel kernel;
        kernel.addProcess(8).arguments = row.block;
        std::string buffer(row.room + 1, '#');
        EXPECT_EQ(vn_arguments(8, buffer.data(), row.room), row.result);
        if (row.result == 0) {
            EXPECT_STREQ(buffer.c_str(), row.text.c_str());
        }
        EXPECT_EQ(buffer[row.room], '#') << "written beyond its room";
    }
    FakeKernel kernel;
    kernel.addProcess(8);
    std::array<char, 8> buffer{};
    EXPECT_EQ(vn_arguments(8, buffer.data(), buffer.size()), -1) << "refused";
}

/// In network order, under bits that are none of it.
FakeDescriptor listening(int port) {
    return {.port = 0x7f0000 | (port & 0xff) << 8 | port >> 8};
}

struct PortRow {
    const char* name;
    std::vector<FakeDescriptor> descriptors;
    std::int32_t count;
    std::vector<std::uint16_t> ports = {};
    std::vector<int> tableAnswers = {};
    int tableError = 0;
};

TEST(DarwinPorts, onlyWhereItListensOverTcp) {
    const FakeDescriptor web = listening(3000);
    FakeDescriptor file = web, datagrams = web, local = web, connected = web, closing = web;
    file.type = 1;
    datagrams.kind = SOCKINFO_IN;
    local.kind = SOCKINFO_UN;
    connected.state = TSI_S_ESTABLISHED;
    closing.reply = 400;
    const FakeDescriptor other = listening(80), third = listening(443);
    const std::vector<PortRow> rows = {
        {"no descriptors", {}, 0},
        {"in the order of the table", {web, other}, 2, {3000, 80}},
        {"twice, over IPv4 and IPv6", {web, web, other}, 2, {3000, 80}},
        {"what is no listener", {file, datagrams, local, connected, closing, listening(0)}, 0},
        {"no more than there is room for", {web, other, third}, 2, {3000, 80}},
        {"table refused", {web}, -1, {}, {-1}},
        {"refused in the library's way", {web}, -1, {}, {}, EPERM},
        {"half a descriptor at the end", {web, other}, 1, {3000}, {16, 15}},
    };
    for (const PortRow& row : rows) {
        SCOPED_TRACE(row.name);
        FakeKernel kernel;
        FakeProcess& process = kernel.addProcess(8);
        process.descriptors = row.descriptors;
        process.tableAnswers = row.tableAnswers;
        process.tableError = row.tableError;
        std::array<std::uint16_t, 3> ports{1, 1, 1};
        errno = EPERM; // somebody else's
        EXPECT_EQ(vn_ports(8, ports.data(), 2), row.count);
        for (std::size_t at = 0; at < row.ports.size(); ++at)
            EXPECT_EQ(ports[at], row.ports[at]);
        EXPECT_EQ(ports[2], 1) << "written beyond its room";
    }
    FakeKernel kernel;
    kernel.addProcess(8).descriptors = {web};
    VNListeners* const listeners = vn_listeners_open();
    std::array<std::uint16_t, 1> port{};
    EXPECT_EQ(vn_listeners_ports(listeners, 8, port.data(), 1), 1);
    EXPECT_EQ(port[0], 3000);
    EXPECT_EQ(vn_listeners_ports(listeners, 77, port.data(), 1), -1) << "gone";
    vn_listeners_close(listeners);
}

constexpr std::int32_t itself = -7; ///< stands for this test's own pid

struct SignalRow {
    const char* name;
    std::int32_t pid;
    std::uint64_t start;
    std::int32_t foreign; ///< added to this user
    std::int32_t signal;
    std::int32_t result;
    std::function<void(FakeKernel&)> prepare = {};
    bool sent = false;
};

TEST(DarwinSignal, checksInOrder) {
    constexpr std::uint64_t start = 100'000'007;
    const auto refuse = [](int error) {
        return [error](FakeKernel& kernel) { kernel.processes[8].basicError = error; };
    };
    const std::vector<SignalRow> rows = {
        {"asked to end", 8, start, 0, SIGTERM, 0, {}, true},
        {"made to end", 8, start, 0, SIGKILL, 0, {}, true},
        {"first process, whatever else", 1, 0, 9, 2, EPERM},
        {"kernel", 0, start, 0, SIGTERM, EPERM},
        {"a group", -8, start, 0, SIGTERM, EPERM},
        {"this program", itself, start, 0, SIGTERM, EPERM},
        {"somebody else's, before the signal is looked at", 8, start, 1, 2, EPERM},
        {"another signal", 8, start, 0, SIGINT, EINVAL},
        {"another signal, before the process is looked for", 77, start, 0, 0, EINVAL},
        {"gone", 77, start, 0, SIGTERM, ESRCH},
        {"out of reach", 8, start, 0, SIGTERM, EACCES, refuse(EPERM)},
        {"half an answer", 8, start, 0, SIGTERM, EACCES,
         [](FakeKernel& kernel) { kernel.processes[8].basicReply = 100; }},
        {"pid given to another", 8, start + 1, 0, SIGTERM, 70},
        {"user changed", 8, start, 0, SIGTERM, 70,
         [](FakeKernel& kernel) { ++kernel.processes[8].basic.pbi_uid; }},
        {"refused by the kernel", 8, start, 0, SIGTERM, EPERM,
         [](FakeKernel& kernel) { kernel.killAnswer = EPERM; }, true},
    };
    for (const SignalRow& row : rows) {
        SCOPED_TRACE(row.name);
        FakeKernel kernel;
        for (const std::int32_t pid : {1, 8, getpid()})
            kernel.addProcess(pid);
        if (row.prepare) row.prepare(kernel);
        const std::int32_t pid = row.pid == itself ? getpid() : row.pid;
        errno = ESRCH; // somebody else's
        EXPECT_EQ(
            vn_signal_checked(pid, row.start, getuid() + static_cast<std::uint32_t>(row.foreign), row.signal),
            row.result);
        if (row.sent) {
            EXPECT_THAT(kernel.kills, ElementsAre(Pair(pid, row.signal)));
        } else {
            EXPECT_THAT(kernel.kills, IsEmpty());
        }
    }
}

TEST(DarwinSignal, existence) {
    using Row = std::tuple<const char*, std::int32_t, int, std::int32_t>;
    for (const auto& [name, pid, killAnswer, result] : {Row{"there", 8, 0, 0},
                                                        {"somebody else's", 8, EPERM, EPERM},
                                                        {"gone", 8, ESRCH, ESRCH},
                                                        {"not collected", 77, 0, ESRCH},
                                                        {"all there are", -1, 0, ESRCH},
                                                        {"own group", 0, 0, ESRCH}}) {
        SCOPED_TRACE(name);
        FakeKernel kernel;
        kernel.addProcess(8);
        kernel.killAnswer = killAnswer;
        EXPECT_EQ(vn_exists(pid), result);
        for (const auto& [asked, signal] : kernel.kills)
            EXPECT_EQ(signal, 0);
        EXPECT_EQ(kernel.kills.empty(), pid < 1) << "a group was addressed";
    }
}

TEST(DarwinIdentity, wholeAnswersOnly) {
    FakeKernel kernel;
    FakeProcess& process = kernel.addProcess(8);
    std::uint64_t start = 0;
    std::uint32_t uid = 0;
    EXPECT_EQ(vn_identity(8, &start, &uid), 0);
    EXPECT_EQ(start, 100'000'007U);
    EXPECT_EQ(uid, getuid());
    EXPECT_EQ(vn_identity(77, &start, &uid), -1);
    process.basicReply = 135;
    EXPECT_EQ(vn_identity(8, &start, &uid), -1);
}

} // namespace
} // namespace varnet::probes
