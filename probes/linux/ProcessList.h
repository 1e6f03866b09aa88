#pragma once

#include "probes/linux/KernelRoot.h"
#include "probes/vn_probes.h"

#include <cstddef>
#include <cstdint>

/// The stateless questions about processes, over a kernel root. They answer as the functions of the same
/// name in vn_probes.h.
namespace varnet::probes {

enum class ListKind { graph, full };

std::int32_t collectProcesses(const KernelRoot& root, ListKind kind, VNProcessEntry** list);
std::int32_t identity(const KernelRoot& root, std::int32_t pid, std::uint64_t* start, std::uint32_t* uid);
std::int32_t path(const KernelRoot& root, std::int32_t pid, char* buffer, std::size_t size);
std::int32_t cwd(const KernelRoot& root, std::int32_t pid, char* buffer, std::size_t size);
std::int32_t arguments(const KernelRoot& root, std::int32_t pid, char* buffer, std::size_t size);

} // namespace varnet::probes
