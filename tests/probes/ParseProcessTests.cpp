#include "probes/linux/ParseProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

namespace varnet::probes {

namespace {

using namespace std::string_literals;

/// `stat` up to its 22nd field, the last that is read.
std::string statLine(const std::string& name, const std::string& afterName) {
    return "7 (" + name + ") " + afterName;
}

const std::string usual = "S 4 1 1 0 -1 4194304 1 2 3 4 50 6 -7 -8 20 0 3 0 12345 99 99\n";

TEST(ParseProcStat, names) {
    using Row = std::tuple<const char*, std::string>;
    const std::vector<Row> rows{
        {"plain", "bash"},
        {"empty", ""},
        {"blanks", " a  b "},
        {"paren inside", "a) S 1 (b"},
        {"only parens", "))(("},
        {"newline", "two\nlines"},
        {"tab", "a\tb"},
        {"not UTF-8", "\xff\xfe\x80"},
        {"longer than the kernel's 15 bytes", std::string(300, 'k')},
    };
    for (const auto& [oddity, name] : rows) {
        SCOPED_TRACE(oddity);
        const std::string text = statLine(name, usual);
        const auto stat = parseProcStat(text);
        ASSERT_TRUE(stat);
        EXPECT_EQ(stat->name, name);
        EXPECT_EQ(stat->pid, 7);
        EXPECT_EQ(stat->state, 'S');
        EXPECT_EQ(stat->parent, 4);
        EXPECT_EQ(stat->cpuTicks, 56U);
        EXPECT_EQ(stat->threads, 3U);
        EXPECT_EQ(stat->startTicks, 12345U);
        EXPECT_FALSE(stat->kernelThread);
    }
}

TEST(ParseProcStat, refused) {
    using Row = std::tuple<const char*, std::string>;
    const std::vector<Row> rows{
        {"empty", ""},
        {"no name", "7 S 4 1 1"},
        {"cut off in the name", "7 (a"},
        {"cut off after the name", "7 (a)"},
        {"closing before opening", "7 )a( S 4 1 1 0 -1 0 1 2 3 4 50 6 -7 -8 20 0 3 0 12345"},
        {"cut off before the start", "7 (a) S 4 1 1 0 -1 0 1 2 3 4 50 6 -7 -8 20 0 3 0"},
        {"pid is no number", "x (a) " + usual},
        {"pid above 32 bits", "4294967303 (a) " + usual},
        {"negative pid", "-7 (a) " + usual},
        {"state of two letters", "7 (a) SS 4 1 1 0 -1 0 1 2 3 4 50 6 -7 -8 20 0 3 0 12345"},
        {"negative parent", "7 (a) S -4 1 1 0 -1 0 1 2 3 4 50 6 -7 -8 20 0 3 0 12345"},
        {"negative start", "7 (a) S 4 1 1 0 -1 0 1 2 3 4 50 6 -7 -8 20 0 3 0 -12345"},
        {"start above 64 bits", "7 (a) S 4 1 1 0 -1 0 1 2 3 4 50 6 0 0 20 0 3 0 99999999999999999999"},
        {"start that overflows in microseconds",
         "7 (a) S 4 1 1 0 -1 0 1 2 3 4 5 6 0 0 20 0 3 0 18446744073709551615"},
        {"CPU time that overflows in nanoseconds",
         "7 (a) S 4 1 1 0 -1 0 1 2 3 4 18446744073709551615 6 0 0 20 0 3 0 1"},
    };
    for (const auto& [oddity, text] : rows) {
        SCOPED_TRACE(oddity);
        EXPECT_FALSE(parseProcStat(text));
    }
}

TEST(ParseProcStat, ended) {
    using Row = std::tuple<const char*, const char*, const char*, bool>;
    for (const auto& [oddity, state, threads, ended] : std::vector<Row>{
             {"sleeps", "S", "1", false},
             {"stopped", "T", "1", false},
             {"waits to be collected", "Z", "1", true},
             {"threads live on without their main thread", "Z", "4", false},
             {"collected, threads no longer counted", "X", "0", true},
         }) {
        SCOPED_TRACE(oddity);
        const std::string text =
            "7 (a) "s + state + " 4 1 1 0 -1 2097152 1 2 3 4 5 6 0 0 20 0 " + threads + " 0 1";
        const auto stat = parseProcStat(text);
        ASSERT_TRUE(stat);
        EXPECT_EQ(stat->ended(), ended);
        EXPECT_TRUE(stat->kernelThread); // 2097152
    }
}

const std::string identityLines = "Name:\tx\nTgid:\t7\nPid:\t7\nUid:\t1000\t0\t0\t0\n";
const std::string memoryLines =
    "VmRSS:\t  900 kB\nRssAnon:\t  100 kB\nRssFile:\t  700 kB\nRssShmem:\t   10 kB\nVmSwap:\t   1 kB\n";
const std::string wakeupLines = "voluntary_ctxt_switches:\t42\nnonvoluntary_ctxt_switches:\t9\n";

TEST(ParseProcStatus, usage) {
    using Row = std::tuple<const char*, std::string, bool, std::uint64_t, std::uint64_t>;
    for (const auto& [oddity, text, hasUsage, memory, wakeups] : std::vector<Row>{
             {"usual", identityLines + memoryLines + wakeupLines, true, 111 * 1024, 42},
             {"kernel thread: no memory lines", identityLines + wakeupLines, true, 0, 42},
             {"400 groups in front of the counters",
              identityLines + "Groups:\t" + std::string(300'000, '1') + "\n" + memoryLines + wakeupLines,
              true, 111 * 1024, 42},
             {"last line cut short of its newline",
              identityLines + memoryLines + "voluntary_ctxt_switches:\t42", true, 111 * 1024, 42},
             {"early kernel: resident size without its parts",
              identityLines + "VmRSS:\t900 kB\n" + wakeupLines, false, 0, 0},
             {"no wake-ups", identityLines + memoryLines, false, 0, 0},
             {"memory is no number", identityLines + "VmRSS:\t9 kB\nRssAnon:\tmany kB\n" + wakeupLines, false,
              0, 0},
             {"memory without its unit", identityLines + "VmRSS:\t9 kB\nRssAnon:\t9\n" + wakeupLines, false,
              0, 0},
             {"one figure overflows",
              identityLines + "VmRSS:\t9 kB\nRssAnon:\t18446744073709551615 kB\n" + wakeupLines, false, 0, 0},
             {"the sum overflows",
              identityLines + "VmRSS:\t9 kB\nRssAnon:\t18014398509481983 kB\nRssShmem:\t1 kB\n" + wakeupLines,
              false, 0, 0},
             {"a name that looks like a line, as the kernel writes it",
              "Name:\tRssAnon:\\n\n" + identityLines + memoryLines + wakeupLines, true, 111 * 1024, 42},
         }) {
        SCOPED_TRACE(oddity);
        const auto status = parseProcStatus(text);
        ASSERT_TRUE(status);
        EXPECT_EQ(status->processID, 7);
        EXPECT_EQ(status->uid, 0U); // the effective one
        EXPECT_EQ(status->hasUsage, hasUsage);
        EXPECT_EQ(status->memory, memory);
        EXPECT_EQ(status->wakeups, wakeups);
    }
    EXPECT_EQ(parseProcStatus("Tgid:\t5\nPid:\t7\nUid:\t1\t1\t1\t1\n")->processID, 5) << "a thread's";
}

TEST(ParseProcStatus, refused) {
    for (const char* const text :
         {"", "Tgid:\t7\n", "Uid:\t1\t1\t1\t1\n", "Tgid:\tx\nUid:\t1\t1\t1\t1\n", "Tgid:\t7\nUid:\t1\n",
          "Tgid:\t7\nUid:\t1\t4294967296\t1\t1\n", "Tgid:\t-7\nUid:\t1\t1\t1\t1\n", "Tgid 7\nUid 1 1\n"}) {
        EXPECT_FALSE(parseProcStatus(text)) << text;
    }
}

/// Arguments joined into a buffer of this size; "-1" for a refusal.
std::string joined(std::string_view block, std::size_t size, bool cut = false) {
    std::vector<char> buffer(size + 1, '#');
    const auto length = joinArguments(block, cut, buffer.data(), size);
    EXPECT_EQ(buffer[size], '#') << "written past the end";
    if (!length) return "-1";
    EXPECT_EQ(buffer[*length], '\0');
    return {buffer.data(), *length};
}

TEST(JoinArguments, blocks) {
    using Row = std::tuple<const char*, std::string, std::string>;
    for (const auto& [oddity, block, expected] : std::vector<Row>{
             {"none", "", ""},
             {"one", "a\0"s, "a"},
             {"several", "git\0log\0--all\0"s, "git\tlog\t--all"},
             {"leading empties leave no tab", "\0\0a\0b\0"s, "a\tb"},
             {"an empty one in the middle is one", "a\0\0b\0"s, "a\t\tb"},
             {"only empties", "\0\0\0"s, ""},
             {"rewritten title: the rest of its area is NULs", "worker: idle\0\0\0\0\0"s, "worker: idle"},
             {"rewritten title without a NUL", "worker: idle", "worker: idle"},
             {"last one without its NUL", "a\0b"s, "a\tb"},
             {"tab inside reads as a separator", "a\tb\0c\0"s, "a\tb\tc"},
             {"not UTF-8", "\xff\0\xfe\0"s, "\xff\t\xfe"},
         }) {
        SCOPED_TRACE(oddity);
        EXPECT_EQ(joined(block, 100), expected);
    }
}

TEST(JoinArguments, whatDoesNotFitIsCutAtAWholeArgument) {
    using Row = std::tuple<const char*, std::size_t, std::string>;
    // An argument needs its length and two bytes more behind what is written already.
    for (const auto& [oddity, size, expected] : std::vector<Row>{
             {"room for the NUL only", 1, ""},
             {"one short of the first", 5, ""},
             {"just the first", 6, "one"},
             {"one short of the second", 8, "one"},
             {"just the second", 9, "one\ttwo"},
             {"a later one that would fit is not taken either", 15, "one\ttwo"},
             {"one short of all", 18, "one\ttwo\tlengthy"},
             {"all", 19, "one\ttwo\tlengthy\t4"},
         }) {
        SCOPED_TRACE(oddity);
        EXPECT_EQ(joined("one\0two\0lengthy\0"
                         "4\0"s,
                         size),
                  expected);
    }
    char none = '#';
    EXPECT_FALSE(joinArguments("a\0"s, false, &none, 0));
    EXPECT_EQ(none, '#');
}

TEST(JoinArguments, blockThatWasCut) {
    EXPECT_EQ(joined("one\0two\0thr"s, 100, true), "one\ttwo");
    EXPECT_EQ(joined("one\0two\0"s, 100, true), "one\ttwo") << "cut just behind an argument";
    EXPECT_EQ(joined("onlyonegiant", 100, true), "");
    EXPECT_EQ(joined("title" + std::string(20'000, '\0'), 100, true), "title")
        << "a rewritten title's large area";
}

TEST(JoinArguments, count) {
    const auto arguments = [](std::size_t count) {
        std::string block;
        for (std::size_t i = 0; i < count; ++i)
            block += "x\0"s;
        return block;
    };
    const std::string most = joined(arguments(16'384), 100'000);
    EXPECT_EQ(std::ranges::count(most, 'x'), 16'384);
    EXPECT_EQ(joined(arguments(16'385), 100'000), "-1");
}

} // namespace

} // namespace varnet::probes
