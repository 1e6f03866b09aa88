#include "VarnetCore/Storage/BoundedCommand.h"

#include "VarnetCore/Storage/linux/Confinement.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>

namespace varnet {

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr int pollPause = 15;       // milliseconds
constexpr int endingPause = 10;     // milliseconds
constexpr double gracePeriod = 0.2; // seconds between asking to end and ending

double secondsSince(SteadyClock::time_point start) {
    return std::chrono::duration<double>(SteadyClock::now() - start).count();
}

class OwnedDescriptor {
public:
    explicit OwnedDescriptor(long number) noexcept : number_(static_cast<int>(number)) {}
    OwnedDescriptor(const OwnedDescriptor&) = delete;
    OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;
    ~OwnedDescriptor() {
        if (number_ >= 0) close(number_);
    }
    int number() const noexcept { return number_; }

private:
    const int number_;
};

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> list;
    list.reserve(texts.size() + 1);
    for (std::string& text : texts)
        list.push_back(text.data());
    list.push_back(nullptr);
    return list;
}

/// Starts the program from the calling thread, whose confinement it inherits. @return its pid, or -1
pid_t spawn(const BoundedCommand& command, int nullDevice) {
    std::vector<std::string> words{command.program};
    words.insert(words.end(), command.arguments.begin(), command.arguments.end());
    std::vector<std::string> variables = command.environment;
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    if (posix_spawn_file_actions_init(&files) != 0) return -1;
    if (posix_spawnattr_init(&attributes) != 0) {
        posix_spawn_file_actions_destroy(&files);
        return -1;
    }
    posix_spawn_file_actions_adddup2(&files, nullDevice, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, command.output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, nullDevice, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    pid_t pid = -1;
    if (posix_spawn(&pid, command.program.c_str(), &files, &attributes, pointers(words).data(),
                    pointers(variables).data()) != 0) {
        pid = -1;
    }
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return pid;
}

/// Starts the program on a thread of its own, which is confined for good and ends. This thread meanwhile
/// judges what may be executed: the very first start waits for that already.
pid_t spawnConfined(const BoundedCommand& command, Confinement& confinement) {
    const OwnedDescriptor nullDevice(open("/dev/null", O_RDWR | O_CLOEXEC));
    const OwnedDescriptor progress(eventfd(0, EFD_CLOEXEC | EFD_SEMAPHORE));
    if (nullDevice.number() < 0 || progress.number() < 0) return -1;
    const auto advance = [&progress] { eventfd_write(progress.number(), 1); };
    pid_t pid = -1;
    std::thread starter([&] {
        const bool confined = confinement.enter();
        advance();
        if (confined) pid = spawn(command, nullDevice.number());
        advance();
    });
    eventfd_t steps = 0;
    while (eventfd_read(progress.number(), &steps) != 0 && errno == EINTR) {
    }
    std::array<pollfd, 2> waits{pollfd{progress.number(), POLLIN, 0}, pollfd{confinement.gate(), POLLIN, 0}};
    for (;;) {
        if (poll(waits.data(), waits.size(), -1) < 0) continue;
        if ((waits[1].revents & POLLIN) != 0) confinement.judge();
        if (waits[0].revents != 0) break;
    }
    starter.join();
    return pid;
}

/// A started program until it is collected.
class Running {
public:
    Running(pid_t pid, Confinement& confinement)
        : pid_(pid), ended_(syscall(SYS_pidfd_open, pid, 0)), confinement_(confinement) {}

    /// Whether it has ended; looks for so many milliseconds at most, and judges starts meanwhile.
    bool endsWithin(int milliseconds) {
        if (hasEnded()) return true;
        // Without a descriptor for its end the pause is slept through.
        std::array<pollfd, 2> waits{pollfd{ended_.number(), POLLIN, 0},
                                    pollfd{confinement_.gate(), POLLIN, 0}};
        if (poll(waits.data(), waits.size(), milliseconds) > 0) {
            if ((waits[1].revents & POLLIN) != 0) {
                confinement_.judge();
            } else if (waits[0].revents == 0) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1)); // a gate nobody can come to
            }
        }
        return hasEnded();
    }

    void ask() const { kill(pid_, SIGTERM); }

    /// Ends it with all that it has started, if it has not ended by itself, and collects it.
    /// @return status of waitpid; empty when it is not known
    std::optional<int> collect(bool insist) {
        if (insist) kill(pid_, SIGKILL);
        siginfo_t info{};
        int answer = -1;
        do {
            answer = waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT);
        } while (answer != 0 && errno == EINTR);
        if (answer != 0) return std::nullopt; // collected by somebody else: its number may be anybody's
        // Not collected yet, so its number still names its own session.
        kill(-pid_, SIGKILL);
        int status = 0;
        pid_t collected = -1;
        while ((collected = waitpid(pid_, &status, 0)) < 0 && errno == EINTR) {
        }
        return collected == pid_ ? std::optional(status) : std::nullopt;
    }

private:
    bool hasEnded() const {
        siginfo_t info{};
        const int answer = waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOHANG | WNOWAIT);
        return (answer == 0 && info.si_pid == pid_) || (answer != 0 && errno == ECHILD);
    }

    const pid_t pid_;
    const OwnedDescriptor ended_;
    Confinement& confinement_;
};

} // namespace

std::optional<std::int32_t> BoundedCommand::run(const StorageCancellation* token) const {
    std::vector<std::string> programs{program};
    programs.insert(programs.end(), helpers.begin(), helpers.end());
    Confinement confinement(std::move(programs));
    pid_t pid = -1;
    try {
        pid = spawnConfined(*this, confinement);
    } catch (const std::system_error&) { // no more threads
        return std::nullopt;
    }
    if (pid < 0) return std::nullopt;
    const rlimit bound{outputLimit, outputLimit};
    prlimit(pid, RLIMIT_FSIZE, &bound, nullptr);

    Running running(pid, confinement);
    const auto start = SteadyClock::now();
    bool ended = false;
    bool cancelled = false;
    while (!ended && !cancelled && secondsSince(start) < timeout) {
        ended = running.endsWithin(pollPause);
        cancelled = token != nullptr && token->cancelled();
    }
    if (!ended && !cancelled) {
        running.ask();
        const auto asked = SteadyClock::now();
        bool gone = false;
        while (!gone && secondsSince(asked) < gracePeriod)
            gone = running.endsWithin(endingPause);
    }
    const auto status = running.collect(!ended);
    if (!ended || !status) return std::nullopt;
    constexpr std::int32_t bySignal = 128;
    return WIFEXITED(*status) ? WEXITSTATUS(*status) : bySignal + WTERMSIG(*status);
}

} // namespace varnet
