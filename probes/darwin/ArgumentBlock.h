#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace varnet::probes {

/// Joins the arguments in the block that the kernel keeps of a process's start: a 32-bit count, the path of
/// the executable, NULs up to the first argument, then arguments and environment as NUL-terminated strings.
/// The process may have overwritten all of it.
/// @param text receives the arguments with tabs between them, NUL-terminated; what does not fit is cut after
///        a whole argument
/// @return 0, or -1 for a block that is none and for a text without room
std::int32_t joinArguments(std::span<const char> block, std::span<char> text) noexcept;

} // namespace varnet::probes
