#pragma once

#include "VarnetCore/Monitoring/ProcessSample.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace varnet {

/// The samples of one pass by pid and by parent. Positions are those in the list of samples, which must
/// outlive this and keep its order, identities and parents.
class ProcessChains {
public:
    /// No position.
    static constexpr std::int32_t none = -1;
    /// Ancestors looked at, at most.
    static constexpr int longestChain = 40;

    explicit ProcessChains(std::span<const ProcessSample> samples);

    /// The sample with a pid, the last one should a table name a pid twice; none when there is none.
    std::int32_t find(std::int32_t pid) const noexcept;
    /// The sample with an identity; none when it is not in the pass.
    std::int32_t find(const ProcessIdentity& identity) const noexcept;
    bool contains(const ProcessIdentity& identity) const noexcept { return find(identity) != none; }

    /// Hands the ancestors of a sample to a visitor, nearest parent first, until it returns true. The chain
    /// ends at a parent younger than its child, whose pid has been reused; when it comes back to the sample;
    /// and after longestChain ancestors.
    template <typename Visitor>
    void visitAncestors(std::int32_t position, Visitor&& visit) const {
        // A loop further up needs no memory of what was seen: its members are only visited again, with the
        // same outcome, until the limit ends the walk.
        const std::int32_t ownPid = links_[index(position)].pid;
        std::int32_t at = links_[index(position)].parent;
        for (int step = 0; step < longestChain && at != none; ++step) {
            const Link& link = links_[index(at)];
            if (link.pid == ownPid || visit(at)) return;
            at = link.parent;
        }
    }

private:
    struct Link {
        std::int32_t pid;
        std::int32_t parent; ///< position of the parent, unless it is younger
    };
    struct Slot {
        std::int32_t pid;
        std::int32_t position = none; ///< none: the slot is free
    };

    static constexpr std::size_t index(std::int32_t position) noexcept {
        return static_cast<std::size_t>(position);
    }
    std::size_t slotOf(std::int32_t pid) const noexcept;

    std::span<const ProcessSample> samples_;
    std::vector<Slot> slots_; ///< open addressing; a power of two, at most half full
    std::size_t mask_ = 0;
    std::vector<Link> links_; ///< by position
    std::vector<std::int32_t>
        earlier_; ///< by position: the one before with the same pid; empty if no pid repeats
};

} // namespace varnet
