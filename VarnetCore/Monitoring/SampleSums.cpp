#include "VarnetCore/Monitoring/SampleSums.h"

#include <algorithm>

namespace varnet::SampleSums {

std::optional<double> sum(std::span<const SampleRef> samples,
                          std::optional<double> ProcessSample::* figure) noexcept {
    std::optional<double> total;
    for (const SampleRef& sample : samples) {
        if (const auto& value = (*sample).*figure) total = total.value_or(0) + *value;
    }
    return total;
}

std::optional<std::uint64_t> memory(std::span<const SampleRef> samples) noexcept {
    std::optional<std::uint64_t> total;
    for (const SampleRef& sample : samples) {
        if (!sample->memory) continue;
        std::uint64_t next = 0;
        if (__builtin_add_overflow(total.value_or(0), *sample->memory, &next)) return std::nullopt;
        total = next;
    }
    return total;
}

std::vector<int> ports(std::span<const SampleRef> samples) {
    std::vector<int> all;
    for (const SampleRef& sample : samples) {
        all.insert(all.end(), sample->ports.begin(), sample->ports.end());
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

} // namespace varnet::SampleSums
