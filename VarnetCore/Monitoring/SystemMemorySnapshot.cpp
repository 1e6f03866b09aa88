#include "VarnetCore/Monitoring/SystemMemorySnapshot.h"

namespace varnet {

std::optional<std::uint64_t> SystemMemorySnapshot::ramAndSwap() const noexcept {
    std::uint64_t sum = 0;
    if (!usedRAM || !swapUsed || __builtin_add_overflow(*usedRAM, *swapUsed, &sum)) return std::nullopt;
    return sum;
}

} // namespace varnet
