#pragma once

#include "probes/vn_probes.h"

#include <cstdint>

namespace varnet {

/// How far a walk goes.
enum class DiskScope {
    everything,
    oneVolume, ///< enters nothing that lies on another device than its start
};

/// A walk through a tree on disk, as an object: see VNDiskWalk. For one thread at a time.
class DiskWalk {
public:
    virtual ~DiskWalk() = default;

    /// One step. @return 1 when the entry was filled, 0 at the end, -1 on failure of the walk as a whole
    virtual std::int32_t next(VNDiskEntry& entry) = 0;
    /// Leaves out what is below the directory that was told last.
    virtual void skip() = 0;
};

} // namespace varnet
