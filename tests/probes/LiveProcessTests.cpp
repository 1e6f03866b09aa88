#include "probes/vn_probes.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/probes/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pthread.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/sysinfo.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace varnet::probes {

namespace {

using testing::AllOf;
using testing::Ge;
using testing::Le;

struct Identity {
    std::uint64_t start = 0;
    std::uint32_t uid = 0;
};

std::optional<Identity> identityOf(pid_t pid) {
    Identity identity;
    if (vn_identity(pid, &identity.start, &identity.uid) != 0) return std::nullopt;
    return identity;
}

/// A process as the three lists tell of it.
struct Listed {
    std::optional<VNProcessEntry> full;
    std::optional<VNProcessEntry> graph;
    std::optional<VNTableEntry> table; ///< without its strings
};

std::optional<VNProcessEntry> findIn(std::int32_t (*list)(VNProcessEntry**), pid_t pid) {
    VNProcessEntry* entries = nullptr;
    const std::int32_t count = list(&entries);
    const std::unique_ptr<VNProcessEntry, decltype(&vn_free)> owner(entries, vn_free);
    for (std::int32_t i = 0; i < count; ++i) {
        if (entries[i].pid == pid) return entries[i];
    }
    return std::nullopt;
}

Listed listed(pid_t pid) {
    Listed result{findIn(vn_processes, pid), findIn(vn_process_graph, pid), {}};
    const std::unique_ptr<VNTable, decltype(&vn_table_close)> table(vn_table_open(), vn_table_close);
    const VNTableEntry* entries = nullptr;
    const std::int32_t count = vn_table_read(table.get(), 1, &entries);
    for (std::int32_t i = 0; i < count; ++i) {
        if (entries[i].pid == pid) result.table = entries[i];
    }
    return result;
}

std::uint64_t microsecondsSince1970() {
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<std::uint64_t>(vn_boot_time()) * 1'000'000 +
           static_cast<std::uint64_t>(now.tv_sec) * 1'000'000 +
           static_cast<std::uint64_t>(now.tv_nsec) / 1000;
}

std::string textOf(std::int32_t (*ask)(std::int32_t, char*, std::size_t), pid_t pid,
                   std::size_t size = 4096) {
    std::vector<char> buffer(size + 1, '#');
    const std::int32_t answer = ask(pid, buffer.data(), size);
    EXPECT_EQ(buffer[size], '#') << "written past the end";
    return answer == 0 ? buffer.data() : "-1";
}

TEST(LiveProcess, isTheSameInEveryAnswer) {
    const TemporaryFolder outer;
    const std::string folder = outer.path() / "removed";
    std::filesystem::create_directory(folder);
    const std::uint64_t before = microsecondsSince1970() - 20'000; // starts are known to a clock tick
    const Child child([&](SharedWords&) {
        if (chdir(folder.c_str()) != 0) _exit(1);
        prctl(PR_SET_NAME, "odd) S (name");
    });
    const auto identity = identityOf(child.pid());
    ASSERT_TRUE(identity);
    EXPECT_THAT(identity->start, AllOf(Ge(before), Le(microsecondsSince1970())));
    EXPECT_EQ(identity->uid, geteuid());
    const std::string self = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(textOf(vn_path, child.pid()), self);
    EXPECT_EQ(textOf(vn_path, child.pid(), 5), self.substr(0, 4));
    EXPECT_EQ(textOf(vn_cwd, child.pid()), folder);
    std::filesystem::remove(folder);
    EXPECT_EQ(textOf(vn_cwd, child.pid()), folder) << "a removed folder keeps its name";

    const Listed lists = listed(child.pid());
    ASSERT_TRUE(lists.full && lists.graph && lists.table);
    EXPECT_EQ(lists.full->start, identity->start);
    EXPECT_EQ(lists.graph->start, identity->start);
    EXPECT_EQ(lists.table->start, identity->start);
    EXPECT_EQ(lists.full->parent, getpid());
    EXPECT_STREQ(lists.full->name, "odd) S (name");
    EXPECT_STREQ(lists.graph->name, "odd) S (name");
    EXPECT_EQ(lists.full->path, self);
    EXPECT_EQ(lists.full->hasUsage, 1);
    EXPECT_GT(lists.full->cpu, 0U);
    EXPECT_GT(lists.full->memory, 4096U);
    EXPECT_EQ(lists.table->memory, lists.full->memory);
}

TEST(LiveProcess, thatHasEndedIsNowhere) {
    Child child;
    ASSERT_TRUE(identityOf(child.pid()));
    EXPECT_EQ(vn_exists(child.pid()), 0);
    child.leaveUncollected();
    for (const char* const when : {"waits to be collected", "collected"}) {
        SCOPED_TRACE(when);
        EXPECT_FALSE(identityOf(child.pid()));
        EXPECT_EQ(vn_exists(child.pid()), ESRCH);
        const Listed lists = listed(child.pid());
        EXPECT_FALSE(lists.full || lists.graph || lists.table);
        EXPECT_EQ(textOf(vn_path, child.pid()), "-1");
        EXPECT_EQ(textOf(vn_cwd, child.pid()), "-1");
        if (std::strcmp(when, "collected") != 0) child.collect();
    }
    EXPECT_EQ(textOf(vn_arguments, child.pid()), "-1");
}

void* sleepForGood(void* tid) {
    *static_cast<std::atomic<std::int64_t>*>(tid) = syscall(SYS_gettid);
    for (;;)
        pause();
}

void startThread(SharedWords& words) {
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, sleepForGood, &words.word) != 0) _exit(1);
    while (words.word == 0)
        usleep(100);
}

TEST(LiveProcess, threadIsNone) {
    const Child child(startThread);
    const auto tid = static_cast<pid_t>(child.word());
    ASSERT_NE(tid, child.pid());
    EXPECT_FALSE(identityOf(tid));
    EXPECT_EQ(vn_exists(tid), ESRCH);
    EXPECT_FALSE(listed(tid).full);
}

TEST(LiveProcess, livesOnWithoutItsMainThread) {
    const Child child([](SharedWords& words) {
        startThread(words);
        words.ready = true;
        syscall(SYS_exit, 0);
    });
    ASSERT_TRUE(eventually([&] { return stateOf(child.pid()) == 'Z'; }));
    EXPECT_TRUE(identityOf(child.pid()));
    EXPECT_EQ(vn_exists(child.pid()), 0);
    const Listed lists = listed(child.pid());
    EXPECT_TRUE(lists.full && lists.graph && lists.table);
}

TEST(LiveProcess, existence) {
    EXPECT_EQ(vn_exists(getpid()), 0);
    EXPECT_EQ(vn_exists(1), geteuid() == 0 ? 0 : EPERM);
    EXPECT_EQ(vn_exists(0), ESRCH);
    EXPECT_EQ(vn_exists(-1), ESRCH) << "every process of the user";
    EXPECT_EQ(vn_exists(-getpid()), ESRCH);
}

/// A child that runs another image with these arguments.
class Napper {
public:
    explicit Napper(std::vector<std::string> arguments)
        : child([&](SharedWords& words) {
              std::vector<char*> argv;
              for (std::string& argument : arguments)
                  argv.push_back(argument.data());
              argv.push_back(nullptr);
              words.ready = true;
              execv(VARNET_NAPPER, argv.data());
              _exit(1);
          }) {
        EXPECT_TRUE(eventually([&] { return textOf(vn_path, child.pid()) == VARNET_NAPPER; }));
    }

    Child child;
};

TEST(LiveArguments, vectors) {
    using Row = std::tuple<const char*, std::vector<std::string>, std::size_t, std::string>;
    const std::string large(100'000, 'a');
    for (const auto& [oddity, arguments, size, expected] : std::vector<Row>{
             {"blanks and quotes", {"napper", "two words", "\"q\""}, 4096, "napper\ttwo words\t\"q\""},
             {"small buffer: leading whole ones", {"napper", "first", "second"}, 15, "napper\tfirst"},
             {"more than is ever read", {"n", large, large, large}, 400'000, "n\t" + large + "\t" + large},
             {"as many as are allowed", std::vector<std::string>(16'384, "x"), 4, "x"},
             {"more than are allowed", std::vector<std::string>(16'385, "x"), 4, "-1"},
         }) {
        SCOPED_TRACE(oddity);
        const Napper napper(arguments);
        EXPECT_EQ(textOf(vn_arguments, napper.child.pid(), size), expected);
    }
}

TEST(LiveMachine, readings) {
    VNCPUTicks before{};
    VNCPUTicks after{};
    ASSERT_EQ(vn_cpu_ticks(&before), 0);
    EXPECT_TRUE(eventually([&] {
        return vn_cpu_ticks(&after) == 0 && after.idle + after.user + after.system + after.nice >
                                                before.idle + before.user + before.system + before.nice;
    }));
    struct sysinfo info{};
    ASSERT_EQ(sysinfo(&info), 0);
    VNSystemMemory memory{};
    vn_system_memory(&memory);
    EXPECT_EQ(memory.hasSwap, 1);
    EXPECT_EQ(memory.hasUsed, 1);
    EXPECT_THAT(memory.used, AllOf(Ge(1U << 20U), Le(info.totalram * info.mem_unit)));

    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    EXPECT_NEAR(static_cast<double>(vn_boot_time()), static_cast<double>(now.tv_sec - info.uptime), 5);
    char model[256] = "before";
    if (vn_model(model, sizeof model) != 0) {
        EXPECT_STREQ(model, "") << "a machine that does not tell its model";
    } else {
        EXPECT_STRNE(model, "");
    }
}

std::ptrdiff_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

void askEverything(pid_t pid) {
    identityOf(pid);
    listed(pid);
    vn_exists(pid);
    char text[64];
    vn_path(pid, text, sizeof text);
    vn_cwd(pid, text, sizeof text);
    vn_arguments(pid, text, sizeof text);
    vn_model(text, sizeof text);
    std::uint16_t ports[4];
    vn_ports(pid, ports, 4);
    vn_listeners_close(vn_listeners_open());
    vn_signal_checked(pid, 1, getuid(), 15);
    VNSystemMemory memory;
    vn_system_memory(&memory);
    VNCPUTicks ticks;
    vn_cpu_ticks(&ticks);
}

TEST(LiveProbes, leaveNoDescriptorBehind) {
    Child gone;
    gone.end();
    const Child child;
    vn_boot_time();
    const auto before = openDescriptors();
    for (const pid_t pid : {getpid(), child.pid(), gone.pid(), 1, 0, -1})
        askEverything(pid);
    EXPECT_EQ(openDescriptors(), before);
}

/// Lets this process open so many more descriptors and no more.
class DescriptorLimit {
public:
    explicit DescriptorLimit(rlim_t more) {
        getrlimit(RLIMIT_NOFILE, &usual_);
        const int next = dup(0); // the lowest that is free
        close(next);
        rlimit limit = usual_;
        limit.rlim_cur = static_cast<rlim_t>(next) + more;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;
    ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &usual_); }

private:
    rlimit usual_{};
};

TEST(LiveProbes, outOfDescriptorsIsNoListWithHoles) {
    const std::unique_ptr<VNTable, decltype(&vn_table_close)> table(vn_table_open(), vn_table_close);
    const VNTableEntry* entries = nullptr;
    for (const rlim_t more : {0U, 1U, 2U, 3U}) {
        SCOPED_TRACE(more);
        std::int32_t counts[3];
        VNProcessEntry* lists[2];
        Child child; // so that the table has something to read
        {
            const DescriptorLimit limit(more);
            counts[0] = vn_processes(&lists[0]);
            counts[1] = vn_process_graph(&lists[1]);
            counts[2] = vn_table_read(table.get(), 1, &entries);
        }
        vn_free(lists[0]);
        vn_free(lists[1]);
        const bool enough = more == 3; // the table, a process, a file; the handle holds the first already
        EXPECT_EQ(counts[0] > 0, enough);
        EXPECT_EQ(counts[1] > 0, enough);
        EXPECT_EQ(entries != nullptr, counts[2] > 0);
        EXPECT_EQ(counts[2] > 0, more >= 2);
        EXPECT_GT(vn_table_read(table.get(), 1, &entries), 1) << "recovers";
    }
}

} // namespace

} // namespace varnet::probes
