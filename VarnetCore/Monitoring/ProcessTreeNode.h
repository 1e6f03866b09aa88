#pragma once

#include "VarnetCore/Monitoring/ProcessSample.h"

#include <optional>
#include <span>
#include <vector>

namespace varnet {

/// One node of the parent-child display.
struct ProcessTreeNode {
    SampleRef process;
    std::optional<std::vector<ProcessTreeNode>> children; ///< empty, not an empty list, for a leaf

    const ProcessIdentity& id() const noexcept { return process->id; }

    /// The forest over the given processes, oldest first at every level. Each process appears once, also in
    /// a table whose parents form a loop.
    static std::vector<ProcessTreeNode> roots(std::span<const SampleRef> processes);
};

} // namespace varnet
