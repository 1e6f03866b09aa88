#pragma once

#include <libproc.h>

#include <cstdint>

namespace varnet::probes {

/// What the kernel tells of every living process, also of other users'. A process that has ended but was not
/// yet collected counts as gone.
/// @return false when it has gone or is out of reach: errno tells, and 0 stands for neither
bool readBasicInfo(std::int32_t pid, proc_bsdinfo& info) noexcept;

/// Microseconds since 1970.
std::uint64_t startOf(const proc_bsdinfo& info) noexcept;

} // namespace varnet::probes
