#pragma once

#include "probes/linux/ProcessList.h"
#include "probes/linux/ProcessTable.h"
#include "probes/vn_probes.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace varnet::probes {

/// What a handle holds between two of its reads: entries with their own copies of the texts.
struct TableCopy {
    std::vector<VNTableEntry> entries;
    std::vector<char> texts;
};

/// The one remembering table of the running kernel. Every handle of the program reads through it, so that a
/// process that one of them has read costs the others no more than a look at its clock. May be read from any
/// thread; a read waits for one that goes on.
class SharedProcessTable {
public:
    SharedProcessTable();

    /// The table that open handles share; a new one when there is none. It ends with its last handle.
    static std::shared_ptr<SharedProcessTable> open();

    /// @return the count of entries in the copy, or -1 with an empty one
    std::int32_t read(ListKind kind, TableCopy& copy);

private:
    std::mutex mutex_;
    ProcessTable table_; ///< guarded by the mutex
};

} // namespace varnet::probes
