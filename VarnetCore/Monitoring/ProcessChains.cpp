#include "VarnetCore/Monitoring/ProcessChains.h"

#include <bit>

namespace varnet {

ProcessChains::ProcessChains(std::span<const ProcessSample> samples)
    : samples_(samples), slots_(std::bit_ceil(samples.size() * 2 + 1)), mask_(slots_.size() - 1) {
    for (std::size_t at = 0; at < samples.size(); ++at) {
        const std::int32_t pid = samples[at].id.pid;
        Slot& slot = slots_[slotOf(pid)];
        if (slot.position != none) {
            if (earlier_.empty()) earlier_.assign(samples.size(), none);
            earlier_[at] = slot.position;
        }
        slot = {pid, static_cast<std::int32_t>(at)};
    }
    links_.reserve(samples.size());
    for (const ProcessSample& sample : samples) {
        const std::int32_t parent = find(sample.parentPID);
        const bool older = parent != none && samples[index(parent)].id.start <= sample.id.start;
        links_.push_back({sample.id.pid, older ? parent : none});
    }
}

/// The slot that holds a pid, or the free one where it belongs.
std::size_t ProcessChains::slotOf(std::int32_t pid) const noexcept {
    // Pids are dense: as they are, neighbours fall into neighbouring slots and the cache likes it.
    std::size_t at = static_cast<std::uint32_t>(pid) & mask_;
    while (slots_[at].position != none && slots_[at].pid != pid)
        at = (at + 1) & mask_;
    return at;
}

std::int32_t ProcessChains::find(std::int32_t pid) const noexcept {
    return slots_[slotOf(pid)].position;
}

std::int32_t ProcessChains::find(const ProcessIdentity& identity) const noexcept {
    for (std::int32_t at = find(identity.pid); at != none; at = earlier_[index(at)]) {
        if (samples_[index(at)].id == identity) return at;
        if (earlier_.empty()) break;
    }
    return none;
}

} // namespace varnet
