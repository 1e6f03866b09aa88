#pragma once

#include <cstdint>
#include <string>

namespace varnet {

/// Which copy of the program this is, and on what it runs.
struct RunningCopy {
    std::string version = "Development"; ///< "1.4.0"
    std::int64_t build = 0;              ///< higher ones are newer
    std::string releaseHost = {};        ///< where releases are announced; empty: for this copy nowhere
    std::string systemVersion = {};      ///< of the kernel, as two or three numbers: "6.1.0"

    static RunningCopy get();
};

} // namespace varnet
