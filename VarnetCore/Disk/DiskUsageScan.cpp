#include "VarnetCore/Disk/DiskUsageScan.h"

#include <limits>

namespace varnet {

std::uint64_t DiskUsageScan::bytes() const noexcept {
    std::uint64_t sum = 0;
    for (const DiskUsageEntry& entry : entries)
        if (__builtin_add_overflow(sum, entry.bytes, &sum)) return std::numeric_limits<std::uint64_t>::max();
    return sum;
}

} // namespace varnet
