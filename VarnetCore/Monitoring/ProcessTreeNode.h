#pragma once

#include "VarnetCore/Monitoring/ProcessSample.h"

#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace varnet {

/// One node of the parent-child display. A forest is built once and moved, never copied. A chain of parents
/// may be as long as the process table: nothing here recurses over it, and a walker should not either.
struct ProcessTreeNode {
    SampleRef process;
    std::optional<std::vector<ProcessTreeNode>> children; ///< empty, not an empty list, for a leaf

    explicit ProcessTreeNode(SampleRef sample) noexcept : process(std::move(sample)) {}
    ProcessTreeNode(ProcessTreeNode&&) noexcept = default;
    ProcessTreeNode& operator=(ProcessTreeNode&&) noexcept = default;
    ProcessTreeNode(const ProcessTreeNode&) = delete;
    ProcessTreeNode& operator=(const ProcessTreeNode&) = delete;
    ~ProcessTreeNode();

    const ProcessIdentity& id() const noexcept { return process->id; }

    /// The forest over the given processes, oldest first at every level. Each process appears once, also in
    /// a table whose parents form a loop.
    static std::vector<ProcessTreeNode> roots(std::span<const SampleRef> processes);
};

} // namespace varnet
