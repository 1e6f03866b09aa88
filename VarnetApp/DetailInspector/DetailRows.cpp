#include "VarnetApp/DetailInspector/DetailRows.h"

#include "VarnetApp/DetailInspector/DetailTexts.h"
#include "VarnetCore/Monitoring/ProcessTreeNode.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace varnet {

QVariant FactRow::value(int role) const {
    switch (role) {
    case 0:
        return QString::fromStdString(key);
    case 1:
        return text;
    default:
        return isAgent;
    }
}

QVariant AddressRow::value(int role) const {
    if (role == 0) return port;
    return "localhost:" + QString::number(port);
}

QVariant DetailServerRow::value(int role) const {
    switch (role) {
    case 0:
        return QString::fromStdString(key);
    case 1:
        return name;
    case 2:
        return ports;
    case 3:
        return stoppable;
    default:
        return stopReason;
    }
}

QVariant DetailProcessRow::value(int role) const {
    switch (role) {
    case 0:
        return name;
    case 1:
        return "PID " + QString::number(pid);
    case 2:
        return depth;
    case 3:
        return figures->percent(cpu);
    case 4:
        return executable;
    default:
        return workingDirectory;
    }
}

std::vector<DetailProcessRow> processRows(std::span<const SampleRef> processes, const Figures& figures) {
    const std::vector<ProcessTreeNode> forest = ProcessTreeNode::roots(processes);
    std::vector<DetailProcessRow> rows;
    rows.reserve(processes.size());
    // A stack of our own: a chain of processes can be longer than the thread's stack.
    std::vector<std::pair<const ProcessTreeNode*, int>> pending;
    for (const ProcessTreeNode& root : forest | std::views::reverse)
        pending.emplace_back(&root, 0);
    while (!pending.empty()) {
        const auto [node, depth] = pending.back();
        pending.pop_back();
        const ProcessSample& process = *node->process;
        rows.push_back({.key = process.id.id(),
                        .name = QString::fromStdString(process.name.str()),
                        .pid = process.id.pid,
                        .depth = std::min(depth, deepestIndent),
                        .cpu = process.averageCPU,
                        .executable = DetailTexts::executable(process),
                        .workingDirectory = DetailTexts::workingDirectory(process),
                        .figures = &figures});
        if (!node->children) continue;
        for (const ProcessTreeNode& child : *node->children | std::views::reverse)
            pending.emplace_back(&child, depth + 1);
    }
    return rows;
}

} // namespace varnet
