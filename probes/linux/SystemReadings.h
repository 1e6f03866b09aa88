#pragma once

#include "probes/linux/KernelRoot.h"
#include "probes/vn_probes.h"

#include <cstddef>
#include <cstdint>

/// Readings of the whole machine, over a kernel root. They answer as the functions of the same name in
/// vn_probes.h.
namespace varnet::probes {

std::int32_t cpuTicks(const KernelRoot& root, VNCPUTicks* ticks);
void systemMemory(const KernelRoot& root, VNSystemMemory* memory);
std::int32_t model(const KernelRoot& root, char* buffer, std::size_t size);

} // namespace varnet::probes
