#include "probes/darwin/BasicInfo.h"

#include "probes/vn_probes.h"

#include <cerrno>

namespace varnet::probes {

static_assert(sizeof(proc_bsdinfo) == 136);

bool readBasicInfo(std::int32_t pid, proc_bsdinfo& info) noexcept {
    errno = 0;
    constexpr int size = sizeof info;
    return proc_pidinfo(pid, PROC_PIDTBSDINFO, 0, &info, size) == size;
}

std::uint64_t startOf(const proc_bsdinfo& info) noexcept {
    return info.pbi_start_tvsec * 1'000'000 + info.pbi_start_tvusec;
}

} // namespace varnet::probes

int32_t vn_identity(int32_t pid, uint64_t* start, uint32_t* uid) {
    proc_bsdinfo info{};
    if (!varnet::probes::readBasicInfo(pid, info)) return -1;
    *start = varnet::probes::startOf(info);
    *uid = info.pbi_uid;
    return 0;
}
