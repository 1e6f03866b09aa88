#include "VarnetCore/Storage/BoundedCommand.h"

#include "VarnetCore/Storage/CommandStart.h"

#include <signal.h>
#include <sys/wait.h>

#include <cerrno>
#include <chrono>
#include <system_error>

namespace varnet {

namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr int pollPause = 15;       // milliseconds
constexpr int endingPause = 10;     // milliseconds
constexpr double gracePeriod = 0.2; // seconds between asking to end and ending

double secondsSince(SteadyClock::time_point start) {
    return std::chrono::duration<double>(SteadyClock::now() - start).count();
}

/// A started program until it is collected.
class Running {
public:
    Running(pid_t pid, CommandStart& start) : pid_(pid), start_(start) {}

    /// Whether it has ended; looks for so many milliseconds at most.
    bool endsWithin(int milliseconds) {
        if (hasEnded()) return true;
        start_.wait(milliseconds);
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
    CommandStart& start_;
};

} // namespace

std::optional<std::int32_t> BoundedCommand::run(const StorageCancellation* token) const {
    CommandStart starter(*this);
    pid_t pid = -1;
    try {
        pid = starter.start();
    } catch (const std::system_error&) { // no more threads
        return std::nullopt;
    }
    if (pid < 0) return std::nullopt;

    Running running(pid, starter);
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
