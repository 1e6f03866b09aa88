#pragma once

#include <cstdint>
#include <vector>

namespace varnet::probes {

/// Appends the entries of an open directory whose names are decimal numbers: pids, descriptors.
/// @return false when the directory cannot be read
bool appendNumbers(int directory, std::vector<std::int32_t>& numbers);

} // namespace varnet::probes
