#pragma once

#include "probes/linux/KernelRoot.h"
#include "probes/linux/ProcessList.h"
#include "probes/linux/ProcessReader.h"
#include "probes/vn_probes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varnet::probes {

/// The process table that remembers. A process that has not run since the last read cannot have changed its
/// name, user, image or usage, so its CPU clock alone (1 microsecond, against 30 for its files) tells whether
/// it must be read. What can change without running is looked after separately: the parent, and memory that
/// the kernel moves about. For one thread at a time.
///
/// The clock of a process that is running on another CPU moves once a scheduler tick, so that what it does
/// within the last tick (4 or 10 ms) before a read may show one read later. A pid that is given away again
/// within a clock tick makes two processes of one identity: the table tells of the second, but a child of the
/// first is not seen to have lost its parent.
class ProcessTable {
public:
    /// Seconds after which the memory of a process that sleeps is not reported any more without having been
    /// looked at again. Only full reads report it.
    static constexpr double memoryRefresh = 30;

    explicit ProcessTable(const KernelRoot& root) : reader_(root) {}

    /// @param seconds a monotonic clock, read by the caller
    /// @return the count of entries, or -1; entries live until the next read
    std::int32_t read(ListKind kind, double seconds, const VNTableEntry** entries);

    /// Processes that the last read read from their files, the sleepers not counted whose turn it was to have
    /// their memory refreshed.
    std::size_t readAnew() const noexcept { return readAnew_; }
    /// Those sleepers.
    std::size_t refreshed() const noexcept { return refreshed_; }

private:
    struct Slot {
        std::int32_t pid = 0;
        /// CPU clock just before the reading, so that no change falls between the two. Empty: not to be
        /// trusted.
        std::optional<std::uint64_t> clock;
        ProcessReading reading;
        std::optional<ProcResident> resident; ///< as of the last refreshing, if there was one
        std::string path;
        bool pathKnown = false; ///< false also when the process has run since its path was read
        bool anew = false;      ///< this read found another process than the one of this pid before
        bool readNow = false;   ///< this read opened its files
        bool gone = false;      ///< ended while this read went on
        double usageRead = 0;   ///< when memory was read
    };

    bool listPids(double seconds);
    void gatherSlots(ListKind kind, double seconds);
    void rereadOrphans(ListKind kind, double seconds);
    void refreshSleepers(double seconds);
    void refresh(Slot& slot, double seconds);
    void readMissingPaths(double seconds);
    bool sleepsOn(const Slot& slot) const;
    void dropGone();
    bool readSlot(Slot& slot, ListKind kind, double seconds);
    static void readPath(Slot& slot, const ProcessFolder& folder);
    bool keepsParent(const Slot& slot) const;
    const Slot* find(std::int32_t pid) const;
    void fillEntries(ListKind kind);

    ProcessReader reader_;
    std::vector<std::int32_t> pids_;            ///< of the last listing, ascending
    std::optional<std::uint64_t> newestListed_; ///< the kernel's newest pid then; empty: to be listed anew
    double listed_ = 0;                         ///< when that was
    std::vector<Slot> slots_; ///< ascending by pid; also those that only wait to be collected
    std::vector<Slot> previous_;
    std::vector<VNTableEntry> entries_;
    std::size_t readAnew_ = 0;
    std::size_t refreshed_ = 0;
    std::vector<Slot*> sleepers_; ///< of the present read only
    double lastRefresh_ = 0;
    bool starved_ = false; ///< this read could not see every process
};

} // namespace varnet::probes
