#pragma once

#include "probes/linux/KernelRoot.h"
#include "probes/linux/ProcessList.h"
#include "probes/linux/ProcessReader.h"
#include "probes/vn_probes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace varnet::probes {

/// The process table that remembers. A process that has not run since the last read cannot have changed its
/// name, user, image or usage, so its CPU clock alone (1 microsecond, against 30 for its files) tells whether
/// it must be read. What can change without running is looked after separately: the parent, and memory that
/// the kernel moves about. For one thread at a time.
class ProcessTable {
public:
    /// Seconds within which the memory of a process that sleeps is read again, as long as full reads come at
    /// least every 6 seconds.
    static constexpr double memoryRefresh = 30;

    explicit ProcessTable(const KernelRoot& root) : reader_(root) {}

    /// @param seconds a monotonic clock, read by the caller
    /// @return the count of entries, or -1; entries live until the next read
    std::int32_t read(ListKind kind, double seconds, const VNTableEntry** entries);

    /// Processes whose files the last read opened, apart from those whose turn it was to be refreshed.
    std::size_t readAnew() const noexcept { return readAnew_; }

private:
    struct Slot {
        std::int32_t pid = 0;
        std::uint64_t clock = 0; ///< CPU clock just before the reading; a process cannot be read "too new"
        ProcessReading reading;
        std::string path;
        bool pathKnown = false; ///< false also when the process has run since its path was read
        bool anew = false;      ///< this read found another process than the one of this pid before
        bool readNow = false;   ///< this read opened its files
        bool gone = false;      ///< ended while this read went on
        double usageRead = 0;   ///< when memory and wake-ups were read
    };

    bool readSlot(Slot& slot, ListKind kind, double seconds);
    static void readPath(Slot& slot, const ProcessFolder& folder);
    bool keepsParent(const Slot& slot) const;
    const Slot* find(std::int32_t pid) const;
    void refreshSleepers(double seconds);

    ProcessReader reader_;
    std::vector<std::int32_t> pids_;
    std::vector<Slot> slots_; ///< ascending by pid; also those that only wait to be collected
    std::vector<Slot> previous_;
    std::vector<VNTableEntry> entries_;
    std::size_t readAnew_ = 0;
    std::int32_t refreshedPid_ = 0; ///< whose turn was last
    double lastRefresh_ = 0;
};

} // namespace varnet::probes
