#include "probes/vn_probes.h"

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

// A process costs three cheap calls here and nothing is read from files, so that a table has nothing to gain
// from remembering: it is the stateless list in the order of pids.

struct VNTable {
    struct FreeList {
        void operator()(VNProcessEntry* storage) const noexcept { vn_free(storage); }
    };

    std::unique_ptr<VNProcessEntry, FreeList> list; ///< what the entries' strings lie in
    std::vector<VNTableEntry> entries;
};

namespace {

/// @throws bad_alloc
void fill(VNTable& table, std::size_t count) {
    table.entries.clear();
    table.entries.reserve(std::max<std::size_t>(count, 1)); // an empty table has an address too
    for (std::size_t at = 0; at < count; ++at) {
        const VNProcessEntry& entry = table.list.get()[at];
        table.entries.push_back({.pid = entry.pid,
                                 .parent = entry.parent,
                                 .uid = entry.uid,
                                 .flags = entry.flags,
                                 .start = entry.start,
                                 .cpu = entry.cpu,
                                 .memory = entry.memory,
                                 .wakeups = entry.wakeups,
                                 .hasUsage = entry.hasUsage,
                                 .name = entry.name,
                                 .path = entry.path});
    }
    std::ranges::sort(table.entries, {}, &VNTableEntry::pid);
}

} // namespace

VNTable* vn_table_open(void) {
    return new (std::nothrow) VNTable;
}

int32_t vn_table_read(VNTable* table, int32_t full, const VNTableEntry** entries) {
    *entries = nullptr;
    VNProcessEntry* list = nullptr;
    const int32_t count = full != 0 ? vn_processes(&list) : vn_process_graph(&list);
    table->list.reset(list);
    if (count < 0) return -1;
    try {
        fill(*table, static_cast<std::size_t>(count));
    } catch (const std::bad_alloc&) {
        return -1;
    }
    *entries = table->entries.data();
    return count;
}

void vn_table_close(VNTable* table) {
    delete table;
}
