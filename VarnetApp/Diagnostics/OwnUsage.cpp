#include "VarnetApp/Diagnostics/OwnUsage.h"

#include <sys/resource.h>

namespace varnet::Diagnostics {

namespace {

rusage ownUsage() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage;
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

} // namespace

double ownCPUSeconds() {
    const rusage usage = ownUsage();
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

std::uint64_t ownPeakBytes() {
    return static_cast<std::uint64_t>(ownUsage().ru_maxrss) * 1024;
}

} // namespace varnet::Diagnostics
