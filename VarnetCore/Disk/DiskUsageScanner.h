#pragma once

#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Disk/DiskUsageIndex.h"
#include "VarnetCore/Disk/DiskUsageScan.h"
#include "VarnetCore/Disk/DiskVolumes.h"
#include "VarnetCore/Storage/StorageCancellation.h"
#include "probes/Probes.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace varnet {

/// Measures a disk, or a folder: every entry once, each hard-linked file at the first name that is met.
/// Changes nothing on the disk. One object serves one scan; it takes a thread of its own besides the
/// caller's.
class DiskUsageScanner {
public:
    struct Setup {
        std::shared_ptr<const StorageCancellation> token; ///< not null
        Probes& probes;                                   ///< only walks are asked for
        const Clock& clock;
        DiskVolumes volumes;                    ///< how this machine's disk is put together
        std::optional<std::int64_t> entryLimit; ///< the scan stops after so many; empty: never
        double progressInterval = 0.75;         ///< seconds
    };

    /// Gets what has been measured so far, in no particular thread; what it tells of is in the index.
    using Update = std::function<void(const DiskUsageScan& scan)>;

    explicit DiskUsageScanner(Setup setup) : setup_(std::move(setup)) {}

    /// @param path empty: the whole startup disk
    /// @param index where everything goes, beside the rows at the top; null: nowhere
    /// @return the last of what was published
    DiskUsageScan scan(const std::optional<std::string>& path, DiskUsageIndex* index,
                       const Update& update = {}) const;

private:
    const Setup setup_;
};

} // namespace varnet
