#include "probes/linux/CheckedSignal.h"

#include "probes/linux/ProcText.h"
#include "probes/linux/ProcessReader.h"

#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

namespace varnet::probes {

namespace {

// The kernel's own ESTALE is 116 here; this number is the one that every platform of ours reports.
constexpr std::int32_t identityChanged = 70;

int pidfdOpen(std::int32_t pid) {
    return static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
}

int pidfdSend(int fd, int signal) {
    return static_cast<int>(syscall(SYS_pidfd_send_signal, fd, signal, nullptr, 0));
}

int killPid(std::int32_t pid, int signal) {
    return kill(pid, signal);
}

/// Some sandboxes refuse calls they do not know instead of denying their existence; the kernel itself never
/// refuses this one.
bool lacksProcessDescriptors(int error) noexcept {
    return error == ENOSYS || error == EPERM;
}

} // namespace

const SignalCalls& SignalCalls::live() {
    static const SignalCalls calls{pidfdOpen, pidfdSend, killPid};
    return calls;
}

std::int32_t signalChecked(const KernelRoot& root, const SignalCalls& calls, std::int32_t pid,
                           std::uint64_t start, std::uint32_t uid, std::int32_t signal) {
    if (pid < 2 || pid == getpid() || uid != getuid()) return EPERM;
    if (signal != SIGTERM && signal != SIGKILL) return EINVAL;

    const Descriptor process(calls.openProcess(pid));
    if (!process.valid() && !lacksProcessDescriptors(errno)) {
        // A mere thread's number is no process.
        return errno == EINVAL || errno == ENOENT ? ESRCH : errno;
    }

    ReadFailure failure{};
    const auto reading = ProcessReader(root).read(ProcessFolder(root, pid), pid, failure);
    if (!reading) {
        return failure == ReadFailure::gone || failure == ReadFailure::thread ? ESRCH : EACCES;
    }
    if (reading->ended) return ESRCH;
    if (!reading->userKnown) return EACCES;
    if (reading->start != start || reading->uid != uid) return identityChanged;

    const int sent = process.valid() ? calls.sendToProcess(process.get(), signal) : calls.kill(pid, signal);
    return sent == 0 ? 0 : errno;
}

std::int32_t exists(const KernelRoot& root, const SignalCalls& calls, std::int32_t pid) {
    // Below 1 the number would address whole groups of processes.
    if (pid < 1) return ESRCH;
    const std::int32_t answer = calls.kill(pid, 0) == 0 ? 0 : errno;
    if (answer == ESRCH) return answer;
    ReadFailure failure{};
    const auto reading = ProcessReader(root).read(ProcessFolder(root, pid), pid, failure);
    // A process may be hidden from us and be there all the same, so that its folder is missing says nothing.
    return (reading && reading->ended) || (!reading && failure == ReadFailure::thread) ? ESRCH : answer;
}

} // namespace varnet::probes
