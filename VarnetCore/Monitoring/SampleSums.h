#pragma once

#include "VarnetCore/Monitoring/ProcessSample.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// What groups, services and the snapshot add up over their processes. Sums skip unknown members and are
/// empty when all are unknown.
namespace varnet::SampleSums {

std::optional<double> sum(std::span<const SampleRef> samples,
                          std::optional<double> ProcessSample::* figure) noexcept;
/// Bytes; empty also when the sum exceeds 64 bits.
std::optional<std::uint64_t> memory(std::span<const SampleRef> samples) noexcept;
/// The listening ports of all, ascending, each once.
std::vector<int> ports(std::span<const SampleRef> samples);

} // namespace varnet::SampleSums
