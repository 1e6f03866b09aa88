#include "probes/linux/ProcessTable.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace varnet::probes {

namespace {

// The turns aim below the promise, by more than one pass of a slow cadence takes.
constexpr double turnLength = ProcessTable::memoryRefresh - 6;

} // namespace

const ProcessTable::Slot* ProcessTable::find(std::int32_t pid) const {
    const auto at = std::ranges::lower_bound(slots_, pid, {}, &Slot::pid);
    return at != slots_.end() && at->pid == pid ? &*at : nullptr;
}

/// Whether a slot that has not run can still have the parent it was read with. When a parent ends, the kernel
/// hands its children on without their taking part in it.
bool ProcessTable::keepsParent(const Slot& slot) const {
    if (slot.reading.parent == 0) return true;
    const Slot* const parent = find(slot.reading.parent);
    return parent != nullptr && !parent->reading.ended && !parent->anew &&
           parent->reading.start <= slot.reading.start;
}

bool ProcessTable::readSlot(Slot& slot, ListKind kind, double seconds) {
    const KernelRoot& root = reader_.root();
    // Before the files: what the process does from here on moves its clock and is found by the next read.
    slot.clock = root.cpuClock != nullptr ? root.cpuClock(slot.pid).value_or(0) : 0;
    const ProcessFolder folder(root, slot.pid);
    ReadFailure failure{};
    const auto reading = reader_.read(folder, slot.pid, failure);
    ++readAnew_;
    if (!reading) return false;
    slot.anew = slot.anew || slot.reading.start != reading->start;
    slot.readNow = true;
    slot.reading = *reading;
    slot.usageRead = seconds;
    slot.pathKnown = false;
    if (kind == ListKind::full) readPath(slot, folder);
    return true;
}

void ProcessTable::readPath(Slot& slot, const ProcessFolder& folder) {
    std::array<char, VN_PATH_SIZE> path{};
    ProcessReader::readPath(folder, "exe", path.data(), path.size());
    slot.path = path.data();
    slot.pathKnown = true;
}

std::int32_t ProcessTable::read(ListKind kind, double seconds, const VNTableEntry** entries) {
    *entries = nullptr;
    readAnew_ = 0;
    if (!reader_.listPids(pids_) || pids_.empty()) return -1;

    // Both lists ascend, so one walk over the two matches them.
    std::swap(previous_, slots_);
    slots_.clear();
    slots_.reserve(pids_.size() + 64);
    auto old = previous_.begin();
    const KernelRoot& root = reader_.root();
    for (const std::int32_t pid : pids_) {
        while (old != previous_.end() && old->pid < pid)
            ++old;
        const bool known = old != previous_.end() && old->pid == pid;
        Slot slot = known ? std::move(*old) : Slot{};
        slot.pid = pid;
        slot.anew = !known;
        slot.readNow = false;
        const auto clock = known && root.cpuClock != nullptr ? root.cpuClock(pid) : std::nullopt;
        if (clock && *clock == slot.clock) {
            slots_.push_back(std::move(slot));
        } else if (readSlot(slot, kind, seconds)) {
            slots_.push_back(std::move(slot));
        }
    }
    bool someGone = false;
    for (Slot& slot : slots_) {
        slot.gone = !slot.readNow && !keepsParent(slot) && !readSlot(slot, kind, seconds);
        someGone = someGone || slot.gone;
    }
    if (someGone) std::erase_if(slots_, [](const Slot& slot) { return slot.gone; });

    if (kind == ListKind::full) {
        refreshSleepers(seconds);
        for (Slot& slot : slots_) {
            if (!slot.pathKnown && !slot.reading.ended) readPath(slot, ProcessFolder(root, slot.pid));
        }
    }

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
    *entries = entries_.data();
    return static_cast<std::int32_t>(entries_.size());
}

/// A sleeper's pages can still be swapped or merged by the kernel. Each is looked at in its turn, a share of
/// the table in every pass, so that no pass pays for all.
void ProcessTable::refreshSleepers(double seconds) {
    const double elapsed = std::clamp(seconds - lastRefresh_, 0.0, turnLength);
    lastRefresh_ = seconds;
    const auto share =
        static_cast<std::size_t>(std::ceil(static_cast<double>(slots_.size()) * elapsed / turnLength));
    for (std::size_t i = 0; i < share; ++i) {
        auto next = std::ranges::upper_bound(slots_, refreshedPid_, {}, &Slot::pid);
        if (next == slots_.end()) next = slots_.begin();
        Slot& slot = *next;
        refreshedPid_ = slot.pid;
        if (slot.usageRead == seconds || slot.reading.ended) continue;
        if (reader_.refreshUsage(ProcessFolder(reader_.root(), slot.pid), slot.reading)) {
            slot.usageRead = seconds;
        }
    }
}

} // namespace varnet::probes
