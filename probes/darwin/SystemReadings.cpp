#include "probes/vn_probes.h"

#include <mach/mach.h>
#include <sys/sysctl.h>
#include <sys/time.h>

#include <atomic>
#include <cstddef>
#include <cstring>

namespace {

/// The right to ask the machine, given back when done.
class Host {
public:
    Host() : port_(mach_host_self()) {}
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host() { mach_port_deallocate(mach_task_self(), port_); }
    mach_port_t port() const noexcept { return port_; }

private:
    const mach_port_t port_;
};

void readSwap(VNSystemMemory& memory) {
    xsw_usage usage{};
    static_assert(sizeof usage == 32);
    size_t size = sizeof usage;
    if (sysctlbyname("vm.swapusage", &usage, &size, nullptr, 0) != 0 || size != sizeof usage) return;
    memory.swapUsed = usage.xsu_used;
    memory.hasSwap = 1;
}

/// The kernel fills as much of its record as it is asked for. What it has grown to by now may be more, or
/// less, than the headers that this was compiled with know of.
constexpr mach_msg_type_number_t counterWords = 62;
constexpr std::size_t counterBytes = 248;
static_assert(counterWords * sizeof(integer_t) == counterBytes);
static_assert(offsetof(vm_statistics64, internal_page_count) + sizeof(natural_t) <= counterBytes);

bool readCounters(const Host& host, vm_statistics64& counters) {
    alignas(vm_statistics64) integer_t words[counterWords] = {};
    mach_msg_type_number_t count = counterWords;
    if (host_statistics64(host.port(), HOST_VM_INFO64, words, &count) != 0) return false;
    std::memcpy(&counters, words, sizeof counters < sizeof words ? sizeof counters : sizeof words);
    return true;
}

void readPages(VNSystemMemory& memory) {
    const Host host;
    vm_size_t pageSize = 0;
    vm_statistics64 counters{};
    if (host_page_size(host.port(), &pageSize) != 0 || !readCounters(host, counters) || pageSize == 0) return;
    memory.compressed = uint64_t{counters.compressor_page_count} * pageSize;
    memory.hasCompressed = 1;
    if (counters.internal_page_count < counters.purgeable_count) return;
    const uint64_t applications = counters.internal_page_count - counters.purgeable_count;
    memory.used = (applications + counters.compressor_page_count + counters.wire_count) * pageSize;
    memory.hasUsed = 1;
}

int64_t readBootTime() {
    timeval boot{};
    static_assert(sizeof boot == 16);
    size_t size = sizeof boot;
    return sysctlbyname("kern.boottime", &boot, &size, nullptr, 0) == 0 ? boot.tv_sec : 0;
}

} // namespace

int32_t vn_cpu_ticks(VNCPUTicks* ticks) {
    const Host host;
    host_cpu_load_info load{};
    mach_msg_type_number_t count = HOST_CPU_LOAD_INFO_COUNT;
    if (host_statistics(host.port(), HOST_CPU_LOAD_INFO, reinterpret_cast<host_info_t>(&load), &count) != 0) {
        return -1;
    }
    *ticks = {.user = load.cpu_ticks[CPU_STATE_USER],
              .system = load.cpu_ticks[CPU_STATE_SYSTEM],
              .idle = load.cpu_ticks[CPU_STATE_IDLE],
              .nice = load.cpu_ticks[CPU_STATE_NICE]};
    return 0;
}

void vn_system_memory(VNSystemMemory* memory) {
    *memory = {};
    readSwap(*memory);
    readPages(*memory);
}

int64_t vn_boot_time(void) {
    // The kernel moves it whenever the clock is set; the run of a program keeps to one.
    static std::atomic<int64_t> known = 0;
    if (int64_t boot = known.load(); boot != 0) return boot;
    int64_t none = 0;
    const int64_t boot = readBootTime();
    return known.compare_exchange_strong(none, boot) ? boot : none;
}

int32_t vn_model(char* buffer, size_t size) {
    return sysctlbyname("hw.model", buffer, &size, nullptr, 0);
}
