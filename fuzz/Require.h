#pragma once

#include <cstdlib>

namespace varnet {

/// A property that a fuzz target states; its breach is a finding.
inline void require(bool holds) {
    if (!holds) std::abort();
}

} // namespace varnet
