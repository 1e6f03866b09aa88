#include "probes/darwin/BasicInfo.h"
#include "probes/vn_probes.h"

#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace {

/// The kernel's ESTALE; spelled out because every platform of ours reports this number.
constexpr int32_t identityChanged = 70;

} // namespace

int32_t vn_exists(int32_t pid) {
    // Below 1 the number would address whole groups of processes.
    if (pid < 1) return ESRCH;
    const int32_t answer = kill(pid, 0) == 0 ? 0 : errno;
    if (answer == ESRCH) return answer;
    // One that only waits to be collected still takes signals, and is not told of any more.
    proc_bsdinfo info{};
    return !varnet::probes::readBasicInfo(pid, info) && errno == ESRCH ? ESRCH : answer;
}

int32_t vn_signal_checked(int32_t pid, uint64_t start, uint32_t uid, int32_t signal) {
    if (pid < 2 || pid == getpid() || uid != getuid()) return EPERM;
    if (signal != SIGTERM && signal != SIGKILL) return EINVAL;
    proc_bsdinfo info{};
    if (!varnet::probes::readBasicInfo(pid, info)) return errno == ESRCH ? ESRCH : EACCES;
    if (varnet::probes::startOf(info) != start || info.pbi_uid != uid) return identityChanged;
    return kill(pid, signal) == 0 ? 0 : errno;
}
