#pragma once

#include <cstdint>

namespace varnet::Diagnostics {

/// CPU seconds of this program since it began, as the kernel accounts them.
double ownCPUSeconds();

/// Most memory this program has held at once, in bytes.
std::uint64_t ownPeakBytes();

} // namespace varnet::Diagnostics
