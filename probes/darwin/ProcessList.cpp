#include "probes/darwin/BasicInfo.h"
#include "probes/vn_probes.h"

#include <libproc.h>
#include <mach/mach_time.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace varnet::probes {

namespace {

__extension__ typedef unsigned __int128 Wide;

struct Free {
    void operator()(void* storage) const noexcept { std::free(storage); }
};

template <class Record>
using Storage = std::unique_ptr<Record[], Free>;

template <class Record>
Storage<Record> zeroed(std::size_t count) noexcept {
    return Storage<Record>(static_cast<Record*>(std::calloc(count, sizeof(Record))));
}

enum class ListKind { full, graph };

/// Processes that may start between asking for their number and asking for them.
constexpr std::int32_t spareSlots = 256;

template <std::size_t size>
void copyName(VNProcessEntry& entry, const char (&name)[size]) noexcept {
    const std::size_t length = std::min<std::size_t>(strnlen(name, size), VN_NAME_SIZE - 1);
    std::memcpy(entry.name, name, length);
}

void fillIdentity(VNProcessEntry& entry, std::int32_t pid, const proc_bsdinfo& info) noexcept {
    entry.pid = pid;
    entry.parent = static_cast<std::int32_t>(info.pbi_ppid);
    entry.uid = info.pbi_uid;
    entry.flags = info.pbi_flags;
    entry.start = startOf(info);
    if (info.pbi_name[0] != '\0') {
        copyName(entry, info.pbi_name);
    } else {
        copyName(entry, info.pbi_comm);
    }
}

void fillUsage(VNProcessEntry& entry, const mach_timebase_info_data_t& timebase) noexcept {
    rusage_info_v2 usage{};
    if (proc_pid_rusage(entry.pid, RUSAGE_INFO_V2, reinterpret_cast<rusage_info_t*>(&usage)) != 0) return;
    // Without the clock's scale its units tell nothing.
    if (timebase.denom == 0) return;
    const Wide units = Wide{usage.ri_user_time} + usage.ri_system_time;
    entry.cpu = static_cast<std::uint64_t>(units * timebase.numer / timebase.denom);
    entry.memory = usage.ri_phys_footprint;
    entry.wakeups = usage.ri_pkg_idle_wkups;
    entry.hasUsage = 1;
}

std::int32_t collect(ListKind kind, VNProcessEntry** list) noexcept {
    mach_timebase_info_data_t timebase{};
    mach_timebase_info(&timebase);
    *list = nullptr;
    const std::int32_t expected = proc_listallpids(nullptr, 0);
    if (expected < 1) return -1;
    const std::int32_t capacity = expected + spareSlots;
    const auto slots = static_cast<std::size_t>(capacity);
    const Storage<std::int32_t> pids = zeroed<std::int32_t>(slots);
    Storage<VNProcessEntry> entries = zeroed<VNProcessEntry>(slots);
    if (!pids || !entries) return -1;
    const auto size = static_cast<int>(slots * sizeof(std::int32_t));
    const std::int32_t answer = proc_listallpids(pids.get(), size);
    if (answer < 0) return -1;

    std::int32_t filled = 0;
    for (std::int32_t at = 0; at < std::min(answer, capacity); ++at) {
        const std::int32_t pid = pids[static_cast<std::size_t>(at)];
        proc_bsdinfo info{};
        if (pid < 1 || !readBasicInfo(pid, info)) continue;
        VNProcessEntry& entry = entries[static_cast<std::size_t>(filled++)];
        fillIdentity(entry, pid, info);
        if (kind == ListKind::graph) continue;
        proc_pidpath(pid, entry.path, VN_PATH_SIZE);
        fillUsage(entry, timebase);
    }
    *list = entries.release();
    return filled;
}

} // namespace

} // namespace varnet::probes

void vn_free(void* list) {
    std::free(list);
}

int32_t vn_processes(VNProcessEntry** list) {
    return varnet::probes::collect(varnet::probes::ListKind::full, list);
}

int32_t vn_process_graph(VNProcessEntry** list) {
    return varnet::probes::collect(varnet::probes::ListKind::graph, list);
}
