#include "probes/linux/CheckedSignal.h"
#include "probes/vn_probes.h"
#include "tests/probes/Child.h"
#include "tests/probes/FixtureKernel.h"
#include "tests/probes/PidNamespace.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <tuple>
#include <vector>

namespace varnet::probes {

namespace {

/// The calls, counted and made to fail at will. They reach no process.
struct Counted {
    static inline int openError, sendError, killError; // 0: succeeds
    static inline int opened, sent, killed;

    static void reset() { openError = sendError = killError = opened = sent = killed = 0; }
    static int failWith(int error) {
        errno = error;
        return error == 0 ? 0 : -1;
    }
    static int open(std::int32_t) {
        ++opened;
        return openError != 0 ? failWith(openError) : ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    }
    static int send(int, int) {
        ++sent;
        return failWith(sendError);
    }
    static int kill(std::int32_t, int) {
        ++killed;
        return failWith(killError);
    }
    static constexpr SignalCalls calls{open, send, kill};
};

struct Target {
    std::uint64_t start = 0;
    std::uint32_t uid = 0;

    explicit Target(pid_t pid) { EXPECT_EQ(vn_identity(pid, &start, &uid), 0); }
};

class CheckedSignal : public testing::Test {
protected:
    void SetUp() override { Counted::reset(); }

    FixtureKernel kernel;
};

/// Each row fails more than one check: the earliest decides, and nothing is sent.
TEST_F(CheckedSignal, refusesInItsOrder) {
    using Row = std::tuple<const char*, std::int32_t, std::uint64_t, std::uint32_t, int, int, bool>;
    constexpr std::int32_t stale = 70;
    const std::uint32_t user = getuid();
    const std::uint64_t start = FixtureKernel::bootSeconds * 1'000'000 + 10'000'000;
    kernel.put({.pid = 50, .uid = user});
    kernel.put({.pid = 51, .uid = user + 1});
    kernel.put({.pid = 52, .state = 'Z', .uid = user, .anonymousKilobytes = {}});
    kernel.put({.pid = 53, .uid = user});
    kernel.write("proc/53/stat", "53 (cut");
    kernel.put({.pid = 54, .uid = user});
    std::filesystem::remove(kernel.processFolder(54) / "status");
    std::filesystem::create_directories(kernel.processFolder(54) / "status");
    kernel.put({.pid = 55, .uid = user});
    kernel.write("proc/55/status", "Tgid:\t50\nPid:\t55\nUid:\t0\t0\t0\t0\n");
    for (const auto& [oddity, pid, stated, uid, signal, expected, opens] : std::vector<Row>{
             {"the first process, and a wrong signal", 1, 0, user, 2, EPERM, false},
             {"this process's own group", 0, start, user, 15, EPERM, false},
             {"every process", -1, start, user, 15, EPERM, false},
             {"another group", -50, start, user, 15, EPERM, false},
             {"this program", getpid(), start, user, 15, EPERM, false},
             {"another user, and a wrong signal", 50, start, user + 1, 2, EPERM, false},
             {"another user's process, honestly", 51, start, user + 1, 15, EPERM, false},
             {"interrupt", 50, start, user, 2, EINVAL, false},
             {"no signal at all", 50, start, user, 0, EINVAL, false},
             {"wrong signal to nobody", 99, start, user, -15, EINVAL, false},
             {"gone", 99, start, user, 15, ESRCH, true},
             {"not collected yet, and younger", 52, start + 1, user, 9, ESRCH, true},
             {"a mere thread", 55, start, user, 15, ESRCH, true},
             {"makes no sense", 53, start, user, 15, EACCES, true},
             {"does not tell its user", 54, start, user, 15, EACCES, true},
             {"started later", 50, start - 10'000, user, 15, stale, true},
             {"started earlier", 50, start + 10'000, user, 9, stale, true},
             {"the user changed", 51, start, user, 15, stale, true},
         }) {
        SCOPED_TRACE(oddity);
        Counted::reset();
        EXPECT_EQ(signalChecked(kernel.root(), Counted::calls, pid, stated, uid, signal), expected);
        EXPECT_EQ(Counted::opened, opens ? 1 : 0);
        EXPECT_EQ(Counted::sent + Counted::killed, 0);
    }
}

TEST_F(CheckedSignal, waysToSend) {
    using Row = std::tuple<const char*, int, int, int, int, int, int>;
    const std::uint32_t user = getuid();
    kernel.put({.pid = 50, .uid = user});
    for (const auto& [oddity, openError, sendError, killError, expected, sent, killed] : std::vector<Row>{
             {"by descriptor", 0, 0, 0, 0, 1, 0},
             {"ended after the checks", 0, ESRCH, 0, ESRCH, 1, 0},
             {"refused by the kernel", 0, EPERM, 0, EPERM, 1, 0},
             {"kernel without process descriptors", ENOSYS, 0, 0, 0, 0, 1},
             {"sandbox that refuses what it does not know", EPERM, 0, 0, 0, 0, 1},
             {"and the signal fails there", ENOSYS, 0, ESRCH, ESRCH, 0, 1},
             {"out of descriptors: unchecked means unsent", EMFILE, 0, 0, EMFILE, 0, 0},
             {"out of memory", ENOMEM, 0, 0, ENOMEM, 0, 0},
             {"gone", ESRCH, 0, 0, ESRCH, 0, 0},
             {"a thread, by an early kernel", EINVAL, 0, 0, ESRCH, 0, 0},
             {"a thread, by a late one", ENOENT, 0, 0, ESRCH, 0, 0},
         }) {
        SCOPED_TRACE(oddity);
        Counted::reset();
        Counted::openError = openError;
        Counted::sendError = sendError;
        Counted::killError = killError;
        const std::uint64_t start = FixtureKernel::bootSeconds * 1'000'000 + 10'000'000;
        EXPECT_EQ(signalChecked(kernel.root(), Counted::calls, 50, start, user, SIGTERM), expected);
        EXPECT_EQ(Counted::sent, sent);
        EXPECT_EQ(Counted::killed, killed);
    }
}

/// Whether a signal waits to be taken by a process, above all by one that blocks it.
bool hasPendingSignal(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    bool pending = false;
    for (std::string line; std::getline(status, line);) {
        if (!line.starts_with("ShdPnd:") && !line.starts_with("SigPnd:")) continue;
        pending = pending || line.find_first_not_of("0 \t", 7) != std::string::npos;
    }
    return pending;
}

bool isUntouched(pid_t pid) {
    return !hasPendingSignal(pid) && stateOf(pid) != 'Z';
}

/// From here on, also in children: a SIGTERM that is sent stays to be seen.
void blockTermination() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigprocmask(SIG_BLOCK, &set, nullptr);
}

TEST(LiveSignal, isDelivered) {
    for (const int signal : {SIGTERM, SIGKILL}) {
        for (const bool descriptors : {true, false}) {
            Child child;
            const Target target(child.pid());
            SignalCalls calls = SignalCalls::live();
            if (!descriptors) {
                calls.openProcess = [](std::int32_t) {
                    errno = ENOSYS;
                    return -1;
                };
            }
            EXPECT_EQ(signalChecked(KernelRoot::live(), calls, child.pid(), target.start, target.uid, signal),
                      0);
            const int status = child.collect();
            EXPECT_TRUE(WIFSIGNALED(status));
            EXPECT_EQ(WTERMSIG(status), signal);
        }
    }
}

TEST(LiveSignal, isRefused) {
    Child child([](SharedWords&) { blockTermination(); });
    const Target target(child.pid());
    EXPECT_EQ(vn_signal_checked(child.pid(), target.start, target.uid, SIGINT), 22);
    EXPECT_EQ(vn_signal_checked(1, target.start, target.uid, SIGTERM), 1);
    EXPECT_EQ(vn_signal_checked(getpid(), target.start, target.uid, SIGTERM), 1);
    EXPECT_EQ(vn_signal_checked(child.pid(), target.start, target.uid + 1, SIGTERM), 1);
    EXPECT_EQ(vn_signal_checked(child.pid(), target.start + 10'000, target.uid, SIGKILL), 70);
    EXPECT_TRUE(isUntouched(child.pid()));
    child.leaveUncollected();
    EXPECT_EQ(vn_signal_checked(child.pid(), target.start, target.uid, SIGTERM), 3);
    child.collect();
    EXPECT_EQ(vn_signal_checked(child.pid(), target.start, target.uid, SIGTERM), 3);
}

TEST(LiveSignal, toAnotherUsersProcess) {
    if (getuid() != 0) {
        std::cout << "not the superuser: checked on the first process only\n";
        EXPECT_EQ(vn_signal_checked(2, 0, 0, SIGTERM), 1);
        return;
    }
    const Child child([](SharedWords&) {
        blockTermination();
        if (setuid(65534) != 0) _exit(1);
    });
    const Target target(child.pid());
    EXPECT_EQ(target.uid, 65534U);
    EXPECT_EQ(vn_signal_checked(child.pid(), target.start, 65534, SIGTERM), 1);
    EXPECT_EQ(vn_signal_checked(child.pid(), target.start, 0, SIGTERM), 70)
        << "it was ours, it is not any more";
    EXPECT_TRUE(isUntouched(child.pid()));
}

/// A pid that is taken from one process and given to the next, in a namespace where that can be forced.
struct ReusedPid {
    static constexpr pid_t pid = 500;

    static bool start() {
        blockTermination();
        return forkWithPid(pid, [] {});
    }
    static bool replace() {
        kill(pid, SIGKILL);
        if (waitpid(pid, nullptr, 0) != pid) return false;
        usleep(30'000); // starts are known to a clock tick
        return start();
    }
};

void expectInNamespace(const std::function<std::string()>& body) {
    const auto problem = runInPidNamespace(body);
    if (!problem) {
        std::cout << "no pid namespaces here: the counted calls stand in\n";
        return;
    }
    EXPECT_EQ(*problem, "");
}

TEST(LiveSignal, reusedPidIsNotSignalled) {
    expectInNamespace([]() -> std::string {
        if (!ReusedPid::start()) return "the pid was not had";
        const Target before(ReusedPid::pid);
        if (!ReusedPid::replace()) return "the pid was not had again";
        for (const int signal : {SIGTERM, SIGKILL}) {
            const int answer = vn_signal_checked(ReusedPid::pid, before.start, before.uid, signal);
            if (answer != 70) return "answered " + std::to_string(answer);
        }
        if (!isUntouched(ReusedPid::pid)) return "the new process was signalled";
        const Target now(ReusedPid::pid);
        if (vn_signal_checked(ReusedPid::pid, now.start, now.uid, SIGTERM) != 0)
            return "the new one cannot be signalled";
        if (!hasPendingSignal(ReusedPid::pid)) return "a pending signal would not have been seen";
        return "";
    });
}

/// The process ends and its pid is given away between two steps of the function.
TEST(LiveSignal, pidReusedWhileItIsChecked) {
    expectInNamespace([]() -> std::string {
        SignalCalls afterOpening = SignalCalls::live();
        afterOpening.openProcess = [](std::int32_t pid) {
            const int process = SignalCalls::live().openProcess(pid);
            return ReusedPid::replace() ? process : -1;
        };
        SignalCalls beforeSending = SignalCalls::live();
        beforeSending.sendToProcess = [](int process, int signal) {
            return ReusedPid::replace() ? SignalCalls::live().sendToProcess(process, signal) : 0;
        };
        if (!ReusedPid::start()) return "the pid was not had";
        for (const int signal : {SIGTERM, SIGKILL}) {
            for (const auto& [calls, expected] :
                 {std::pair{afterOpening, 70}, std::pair{beforeSending, ESRCH}}) {
                const Target target(ReusedPid::pid);
                const int answer = signalChecked(KernelRoot::live(), calls, ReusedPid::pid, target.start,
                                                 target.uid, signal);
                if (answer != expected) return "answered " + std::to_string(answer);
                if (!isUntouched(ReusedPid::pid)) return "the new process was signalled";
            }
        }
        return "";
    });
}

} // namespace

} // namespace varnet::probes
