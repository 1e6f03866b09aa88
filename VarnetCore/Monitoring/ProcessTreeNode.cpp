#include "VarnetCore/Monitoring/ProcessTreeNode.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <unordered_map>
#include <unordered_set>

namespace varnet {
namespace {

using Position = std::size_t;

/// The parts of one build: who is whose child, and what has been placed already.
class Forest {
public:
    explicit Forest(std::span<const SampleRef> processes) : processes_(processes) {
        byPid_.reserve(processes.size());
        for (Position at = 0; at < processes.size(); ++at)
            byPid_.insert_or_assign(processes[at]->id.pid, at);

        std::vector<Position> byAge(processes.size());
        std::iota(byAge.begin(), byAge.end(), Position{0});
        std::stable_sort(byAge.begin(), byAge.end(), [processes](Position a, Position b) {
            return processes[a]->id.start < processes[b]->id.start;
        });
        for (const Position at : byAge) {
            if (isRoot(at)) roots_.push_back(at);
            children_[processes[at]->parentPID].push_back(at);
        }
    }

    std::vector<ProcessTreeNode> grow() {
        std::vector<ProcessTreeNode> forest;
        for (const Position root : roots_)
            growFrom(root, forest);
        // Only members of a parent loop, and what hangs off them, are left.
        for (Position at = 0; at < processes_.size(); ++at)
            growFrom(at, forest);
        return forest;
    }

private:
    /// A node whose children are being placed.
    struct Open {
        ProcessTreeNode node;
        std::span<const Position> children;
    };

    bool isRoot(Position at) const {
        const auto parent = byPid_.find(processes_[at]->parentPID);
        return parent == byPid_.end() || processes_[parent->second]->id == processes_[at]->id;
    }

    std::span<const Position> childrenOf(Position at) const {
        const auto found = children_.find(processes_[at]->id.pid);
        return found == children_.end() ? std::span<const Position>() : found->second;
    }

    /// Depth first with a stack of our own: a chain of processes can be longer than the thread's stack.
    void growFrom(Position root, std::vector<ProcessTreeNode>& forest) {
        if (!placed_.insert(processes_[root]->id).second) return;
        std::vector<Open> open;
        open.push_back({ProcessTreeNode(processes_[root]), childrenOf(root)});
        while (!open.empty()) {
            Open& current = open.back();
            if (!current.children.empty()) {
                const Position child = current.children.front();
                current.children = current.children.subspan(1);
                if (placed_.insert(processes_[child]->id).second) {
                    open.push_back({ProcessTreeNode(processes_[child]), childrenOf(child)});
                }
                continue;
            }
            ProcessTreeNode finished = std::move(current.node);
            open.pop_back();
            if (open.empty()) {
                forest.push_back(std::move(finished));
            } else {
                auto& siblings = open.back().node.children;
                if (!siblings) siblings.emplace();
                siblings->push_back(std::move(finished));
            }
        }
    }

    const std::span<const SampleRef> processes_;
    std::unordered_map<std::int32_t, Position> byPid_;
    std::unordered_map<std::int32_t, std::vector<Position>> children_; ///< by the parent's pid, oldest first
    std::vector<Position> roots_;                                      ///< oldest first
    std::unordered_set<ProcessIdentity> placed_;
};

} // namespace

ProcessTreeNode::~ProcessTreeNode() {
    if (!children) return;
    // Take the subtree apart level by level, so that no node is destroyed while it still has children.
    std::vector<ProcessTreeNode> pending = *std::move(children);
    while (!pending.empty()) {
        ProcessTreeNode node = std::move(pending.back());
        pending.pop_back();
        if (!node.children) continue;
        for (ProcessTreeNode& child : *node.children)
            pending.push_back(std::move(child));
        node.children.reset();
    }
}

std::vector<ProcessTreeNode> ProcessTreeNode::roots(std::span<const SampleRef> processes) {
    return Forest(processes).grow();
}

} // namespace varnet
