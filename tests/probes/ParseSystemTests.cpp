#include "probes/linux/ParseSockets.h"
#include "probes/linux/ParseSystem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace varnet::probes {

namespace {

using Bytes = std::optional<std::uint64_t>;

TEST(ParseCPUTicks, lines) {
    struct Row {
        const char* oddity;
        std::string text;
        std::optional<std::vector<std::uint64_t>> expected; ///< user, system, idle, nice
    };
    for (const Row& row : std::vector<Row>{
             {"guest time is in user already",
              "cpu  1 2 30 400 5000 60000 700000 8000000 9 9\ncpu0 9 9 9 9\n",
              {{1, 8760030, 5400, 2}}},
             {"early kernel without the rest", "cpu 1 2 3 4\n", {{1, 3, 4, 2}}},
             {"not in the first line", "intr 5\ncpu 1 2 3 4\n", {{1, 3, 4, 2}}},
             {"no final newline", "cpu 1 2 3 4", {{1, 3, 4, 2}}},
             {"only single processors", "cpu0 1 2 3 4\n", std::nullopt},
             {"too short", "cpu 1 2 3\n", std::nullopt},
             {"negative", "cpu 1 2 3 -4\n", std::nullopt},
             {"above 64 bits", "cpu 1 2 3 99999999999999999999\n", std::nullopt},
             {"empty", "", std::nullopt},
         }) {
        SCOPED_TRACE(row.oddity);
        const auto ticks = parseCPUTicks(row.text);
        ASSERT_EQ(ticks.has_value(), row.expected.has_value());
        if (ticks) {
            EXPECT_EQ((std::vector{ticks->user, ticks->system, ticks->idle, ticks->nice}), *row.expected);
        }
    }
}

TEST(ParseBootTime, lines) {
    EXPECT_EQ(parseBootTime("cpu 1\nintr 1 2 3\nbtime 1700000000\nprocesses 9\n"), 1'700'000'000U);
    EXPECT_EQ(parseBootTime("btime 1700000000"), 1'700'000'000U);
    EXPECT_FALSE(parseBootTime("cpu 1\nctxt 5\n"));
    EXPECT_FALSE(parseBootTime("btime\n"));
    EXPECT_FALSE(parseBootTime("btime soon\n"));
}

TEST(ParseMemoryInfo, figures) {
    const std::string parts =
        "AnonPages: 1 kB\nShmem: 2 kB\nSUnreclaim: 4 kB\nKernelStack: 8 kB\nPageTables: 16 kB\n";
    struct Row {
        const char* oddity;
        std::string text;
        Bytes swapUsed;
        Bytes held;
        Bytes compressed;
    };
    for (const Row& row : std::vector<Row>{
             {"all",
              "MemTotal: 900 kB\nSwapTotal: 100 kB\nSwapFree: 60 kB\nZswap: 3 kB\nZswapped: 50 kB\n" + parts,
              40 * 1024, 31 * 1024, 3 * 1024},
             {"no swap space at all", "SwapTotal: 0 kB\nSwapFree: 0 kB\n" + parts, 0, 31 * 1024, {}},
             {"more swap free than there is", "SwapTotal: 5 kB\nSwapFree: 6 kB\n" + parts, {}, 31 * 1024, {}},
             {"swap total alone", "SwapTotal: 5 kB\n" + parts, {}, 31 * 1024, {}},
             {"a part is missing",
              "SwapTotal: 5 kB\nSwapFree: 5 kB\nAnonPages: 1 kB\nShmem: 2 kB\n",
              0,
              {},
              {}},
             {"a part of a similar name is another", "ShmemHugePages: 2 kB\nAnonPages: 1 kB\n", {}, {}, {}},
             {"a part makes no sense", parts + "Shmem: x kB\n", {}, {}, {}},
             {"the sum overflows", parts + "AnonPages: 18014398509481983 kB\n", {}, {}, {}},
             {"lines without a colon", "hello\n\n:\n" + parts, {}, 31 * 1024, {}},
             {"empty", "", {}, {}, {}},
         }) {
        SCOPED_TRACE(row.oddity);
        const MemoryInfo info = parseMemoryInfo(row.text);
        EXPECT_EQ(info.swapUsed, row.swapUsed);
        EXPECT_EQ(info.held, row.held);
        EXPECT_EQ(info.compressed, row.compressed);
    }
}

TEST(ParseZramUsed, lines) {
    EXPECT_EQ(parseZramUsed("1000 300 4096 0 8192 5 0 0 0\n"), Bytes(4096));
    EXPECT_EQ(parseZramUsed("     1000   300  4096        0     8192        5\n"), Bytes(4096));
    EXPECT_EQ(parseZramUsed("1000 300\n"), std::nullopt);
    EXPECT_EQ(parseZramUsed("1000 300 -1 0\n"), std::nullopt);
    EXPECT_EQ(parseZramUsed(""), std::nullopt);
}

TEST(ParseNetTCP, lines) {
    const std::string heading =
        "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout inode\n";
    const std::string behind = " 00000000:00000000 00:00000000 00000000  1000        0 ";
    const std::string any = " 00000000:0000 ";
    struct Row {
        const char* oddity;
        std::string line;
        std::vector<Listener> expected;
    };
    for (const Row& row : std::vector<Row>{
             {"IPv4",
              "   0: 0100007F:1F90" + any + "0A" + behind + "777 1 ffff 100 0 0 10 0\n",
              {{777, 8080}}},
             {"IPv6",
              "   0: 00000000000000000000000001000000:01BB 00000000000000000000000000000000:0000 0A" +
                  behind + "778 1\n",
              {{778, 443}}},
             {"row number without a blank",
              "1234: 0100007F:1F90" + any + "0A" + behind + "777 1\n",
              {{777, 8080}}},
             {"inode ends the line", "   0: 0100007F:1F90" + any + "0A" + behind + "777\n", {{777, 8080}}},
             {"connected", "   0: 0100007F:1F90" + any + "01" + behind + "777 1\n", {}},
             {"waits to close", "   0: 0100007F:1F90" + any + "06" + behind + "777 1\n", {}},
             {"port 0", "   0: 0100007F:0000" + any + "0A" + behind + "777 1\n", {}},
             {"no inode any more", "   0: 0100007F:1F90" + any + "0A" + behind + "0 1\n", {}},
             {"port of 17 bits", "   0: 0100007F:11F90" + any + "0A" + behind + "777 1\n", {}},
             {"port with a sign", "   0: 0100007F:-1F9" + any + "0A" + behind + "777 1\n", {}},
             {"no port", "   0: 0100007F:" + any + "0A" + behind + "777 1\n", {}},
             {"no colon", "   0: 0100007F" + any + "0A" + behind + "777 1\n", {}},
             {"inode is no number", "   0: 0100007F:1F90" + any + "0A" + behind + "x7 1\n", {}},
             {"cut off", "   0: 0100007F:1F90" + any + "0A", {}},
             {"empty line", "\n", {}},
         }) {
        SCOPED_TRACE(row.oddity);
        std::vector<Listener> listeners;
        parseNetTCP(heading + row.line, listeners);
        EXPECT_EQ(listeners, row.expected);
    }
    std::vector<Listener> listeners;
    parseNetTCP(heading + "nonsense\n   0: 0100007F:1F90" + any + "0A" + behind + "777 1\n", listeners);
    EXPECT_THAT(listeners, testing::ElementsAre(Listener{777, 8080}))
        << "one odd line must not sink the rest";
}

TEST(ParseSocketLink, links) {
    EXPECT_EQ(parseSocketLink("socket:[12345]"), 12345U);
    for (const char* const link :
         {"socket:[]", "socket:[-1]", "socket:[12345", "socket:[12a]", "pipe:[12345]", "/tmp/socket:[12345]",
          "anon_inode:[eventfd]", "socket:[99999999999999999999]", ""}) {
        EXPECT_FALSE(parseSocketLink(link)) << link;
    }
}

} // namespace

} // namespace varnet::probes
