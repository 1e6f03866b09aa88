#include "probes/linux/KernelRoot.h"

#include "probes/linux/ParseSystem.h"
#include "probes/linux/ProcText.h"

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

namespace varnet::probes {

namespace {

std::optional<std::uint64_t> processCPUNanoseconds(std::int32_t pid) {
    // The clock id of another process as clock_getcpuclockid builds it, without the extra call by which that
    // function checks it: the complement of the pid above three bits, of which 2 selects scheduler time.
    const auto clock = static_cast<clockid_t>((~static_cast<std::uint32_t>(pid) << 3U) | 2U);
    timespec time{};
    if (clock_gettime(clock, &time) != 0) return std::nullopt;
    return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000'000 + static_cast<std::uint64_t>(time.tv_nsec);
}

KernelRoot makeLive() {
    KernelRoot root;
    root.cpuClock = processCPUNanoseconds;
    ProcText text;
    if (const auto stat = text.read(AT_FDCWD, (root.proc + "/stat").c_str())) {
        root.bootSeconds = parseBootTime(*stat).value_or(0);
    }
    if (const long ticks = sysconf(_SC_CLK_TCK); ticks > 0) {
        root.ticksPerSecond = static_cast<std::uint64_t>(ticks);
    }
    return root;
}

} // namespace

const KernelRoot& KernelRoot::live() {
    static const KernelRoot root = makeLive();
    return root;
}

} // namespace varnet::probes
