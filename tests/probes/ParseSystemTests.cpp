#include "probes/linux/ParseSockets.h"
#include "probes/linux/ParseSystem.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
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
    using Row = std::tuple<const char*, std::string, Bytes, Bytes, Bytes>;
    for (const auto& [oddity, text, swapUsed, held, compressed] : std::vector<Row>{
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
        SCOPED_TRACE(oddity);
        const MemoryInfo info = parseMemoryInfo(text);
        EXPECT_EQ(info.swapUsed, swapUsed);
        EXPECT_EQ(info.held, held);
        EXPECT_EQ(info.compressed, compressed);
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
    const auto line = [](const std::string& local, const char* state, const std::string& inode) {
        return "   0: " + local + " 00000000:0000 " + state +
               " 00000000:00000000 00:00000000 00000000  1000        0 " + inode + "\n";
    };
    const std::string web = "0100007F:1F90";
    const std::string six(31, '0');
    const std::vector<Listener> none;
    const std::vector<Listener> listener{{777, 8080}};
    using Row = std::tuple<const char*, std::string, std::vector<Listener>>;
    for (const auto& [oddity, text, expected] : std::vector<Row>{
             {"IPv4", line(web, "0A", "777 1 ffff 100 0 0 10 0"), listener},
             {"IPv6", line(six + "1:01BB", "0A", "778 1"), {{778, 443}}},
             {"row number without a blank", "1234: " + line(web, "0A", "777 1").substr(6), listener},
             {"inode ends the line", line(web, "0A", "777"), listener},
             {"connected", line(web, "01", "777 1"), none},
             {"waits to close", line(web, "06", "777 1"), none},
             {"port 0", line("0100007F:0000", "0A", "777 1"), none},
             {"no inode any more", line(web, "0A", "0 1"), none},
             {"port of 17 bits", line("0100007F:11F90", "0A", "777 1"), none},
             {"port with a sign", line("0100007F:-1F9", "0A", "777 1"), none},
             {"no port", line("0100007F:", "0A", "777 1"), none},
             {"no colon", line("0100007F", "0A", "777 1"), none},
             {"inode is no number", line(web, "0A", "x7 1"), none},
             {"cut off", line(web, "0A", "").substr(0, 36), none},
             {"empty line", "\n", none},
             {"one odd line does not sink the rest", "nonsense\n" + line(web, "0A", "777 1"), listener},
         }) {
        SCOPED_TRACE(oddity);
        std::vector<Listener> listeners;
        parseNetTCP(heading + text, listeners);
        EXPECT_EQ(listeners, expected);
    }
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
