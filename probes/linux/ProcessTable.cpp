#include "probes/linux/ProcessTable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace varnet::probes {

namespace {

// The turns come round before memory is overdue, so that at no usual cadence many are overdue at once.
constexpr double turnLength = ProcessTable::memoryRefresh - 2;

// Seconds after which the table is listed anew in any case: a process restored from a checkpoint is given its
// old pid without the newest one moving.
constexpr double relisting = 10;

} // namespace

std::int32_t ProcessTable::read(ListKind kind, double seconds, const VNTableEntry** entries) {
    *entries = nullptr;
    readAnew_ = 0;
    refreshed_ = 0;
    starved_ = false;
    if (!listPids(seconds)) return -1;
    gatherSlots(kind, seconds);
    rereadOrphans(kind, seconds);
    if (kind == ListKind::full) {
        refreshSleepers(seconds);
        readMissingPaths(seconds);
    }
    // A list with holes would pass for processes that have ended.
    if (starved_) return -1;
    fillEntries(kind);
    *entries = entries_.data();
    return static_cast<std::int32_t>(entries_.size());
}

/// Who may be there: listed anew when a process can have begun since the last listing. A pid that has gone
/// stays listed until then, so that one given away again is found.
bool ProcessTable::listPids(double seconds) {
    // Before the listing: whoever begins from here on moves it.
    const auto newest = reader_.newestPid();
    if (newest && newest == newestListed_ && seconds - listed_ < relisting) return true;
    newestListed_.reset();
    if (!reader_.listPids(pids_) || pids_.empty()) return false;
    newestListed_ = newest;
    listed_ = seconds;
    return true;
}

/// Takes over what has not run since the last read, and reads the rest.
void ProcessTable::gatherSlots(ListKind kind, double seconds) {
    const KernelRoot& root = reader_.root();
    // Both lists ascend, so one walk over the two matches them.
    std::swap(previous_, slots_);
    slots_.clear();
    slots_.reserve(pids_.size() + 64);
    auto old = previous_.begin();
    for (const std::int32_t pid : pids_) {
        while (old != previous_.end() && old->pid < pid)
            ++old;
        const bool known = old != previous_.end() && old->pid == pid;
        Slot& slot = slots_.emplace_back(known ? std::move(*old) : Slot{});
        slot.pid = pid;
        slot.anew = !known;
        slot.readNow = false;
        const auto clock = known && root.cpuClock != nullptr ? root.cpuClock(pid) : std::nullopt;
        if (clock && clock == slot.clock) continue;
        if (!readSlot(slot, kind, seconds)) slots_.pop_back();
    }
}

/// When a parent ends, the kernel hands its children on without their taking part in it.
void ProcessTable::rereadOrphans(ListKind kind, double seconds) {
    for (Slot& slot : slots_)
        slot.gone = !slot.readNow && !keepsParent(slot) && !readSlot(slot, kind, seconds);
    dropGone();
}

/// Whether a slot that has not run can still have the parent it was read with.
bool ProcessTable::keepsParent(const Slot& slot) const {
    if (slot.reading.parent == 0) return true;
    const Slot* const parent = find(slot.reading.parent);
    return parent != nullptr && !parent->reading.ended && !parent->anew &&
           parent->reading.start <= slot.reading.start;
}

const ProcessTable::Slot* ProcessTable::find(std::int32_t pid) const {
    const auto at = std::ranges::lower_bound(slots_, pid, {}, &Slot::pid);
    return at != slots_.end() && at->pid == pid ? &*at : nullptr;
}

/// A sleeper's pages can still be swapped or merged by the kernel. They are looked at in turns, the longest
/// not seen first and a share of the table in every pass, so that no pass pays for all.
void ProcessTable::refreshSleepers(double seconds) {
    const double elapsed = std::clamp(seconds - lastRefresh_, 0.0, turnLength);
    lastRefresh_ = seconds;
    sleepers_.clear();
    std::size_t overdue = 0;
    for (Slot& slot : slots_) {
        const bool hasMemory = !slot.reading.ended && (slot.reading.flags & VN_FLAG_SYSTEM) == 0;
        if (slot.readNow || !hasMemory) continue;
        sleepers_.push_back(&slot);
        if (seconds - slot.usageRead >= memoryRefresh) ++overdue;
    }
    const double share = std::ceil(static_cast<double>(sleepers_.size()) * elapsed / turnLength);
    const std::size_t turns = std::max(static_cast<std::size_t>(share), overdue);
    const auto end = sleepers_.begin() + static_cast<std::ptrdiff_t>(turns);
    std::ranges::nth_element(sleepers_, end, {}, &Slot::usageRead);
    for (auto next = sleepers_.begin(); next != end; ++next)
        refresh(**next, seconds);
    refreshed_ = turns;
    dropGone();
}

void ProcessTable::refresh(Slot& slot, double seconds) {
    const bool done = reader_.refreshMemory(slot.pid, slot.reading, slot.resident);
    slot.usageRead = seconds;
    if (!done || !sleepsOn(slot)) slot.gone = !readSlot(slot, ListKind::full, seconds);
}

/// The same clock after a reading as before it: what was read is this very process's, still asleep.
bool ProcessTable::sleepsOn(const Slot& slot) const {
    const auto clock = reader_.root().cpuClock(slot.pid);
    return clock && clock == slot.clock;
}

/// Of processes that only cheap reads have read so far.
void ProcessTable::readMissingPaths(double seconds) {
    for (Slot& slot : slots_) {
        if (slot.readNow || slot.pathKnown || slot.reading.ended) continue;
        const ProcessFolder folder(reader_.root(), slot.pid);
        readPath(slot, folder);
        if (!sleepsOn(slot)) slot.gone = !readSlot(slot, ListKind::full, seconds);
    }
    dropGone();
}

bool ProcessTable::readSlot(Slot& slot, ListKind kind, double seconds) {
    const KernelRoot& root = reader_.root();
    // Before the files: what the process does from here on moves its clock and is found by the next read.
    const auto clock = root.cpuClock != nullptr ? root.cpuClock(slot.pid) : std::nullopt;
    slot.clock.reset();
    const ProcessFolder folder(root, slot.pid);
    ReadFailure failure{};
    const auto reading = reader_.read(folder, slot.pid, failure);
    ++readAnew_;
    if (!reading) {
        starved_ = starved_ || failure == ReadFailure::starved;
        return false;
    }
    slot.anew = slot.anew || slot.reading.start != reading->start;
    slot.readNow = true;
    slot.reading = *reading;
    slot.clock = clock;
    slot.resident.reset();
    slot.usageRead = seconds;
    slot.pathKnown = false;
    if (kind == ListKind::full) readPath(slot, folder);
    return true;
}

void ProcessTable::readPath(Slot& slot, const ProcessFolder& folder) {
    std::array<char, VN_PATH_SIZE> path;
    ProcessReader::readPath(folder, "exe", path.data(), path.size());
    slot.path = path.data();
    slot.pathKnown = folder.descriptor() >= 0;
}

void ProcessTable::dropGone() {
    std::erase_if(slots_, [](const Slot& slot) { return slot.gone; });
}

void ProcessTable::fillEntries(ListKind kind) {
    entries_.clear();
    for (const Slot& slot : slots_) {
        const ProcessReading& reading = slot.reading;
        if (reading.ended) continue;
        VNTableEntry& entry = entries_.emplace_back();
        entry.pid = slot.pid;
        entry.parent = reading.parent;
        entry.uid = reading.uid;
        entry.flags = reading.flags;
        entry.start = reading.start;
        entry.name = reading.name.data();
        entry.path = "";
        if (kind == ListKind::graph) continue;
        entry.path = slot.path.c_str();
        entry.cpu = reading.cpu;
        entry.memory = reading.memory;
        entry.wakeups = reading.wakeups;
        entry.hasUsage = reading.hasUsage ? 1 : 0;
    }
}

} // namespace varnet::probes
