#include "probes/fake/FakeProbes.h"

namespace varnet {

const FakeProcess* FakeProbes::find(std::int32_t pid) const {
    const auto at = processes.find(pid);
    return at == processes.end() ? nullptr : &at->second;
}

std::optional<std::span<const VNTableEntry>> FakeProbes::table(bool full) {
    ++(full ? calls.fullTables : calls.graphTables);
    if (tableFails) return std::nullopt;
    entries_.clear();
    for (const auto& [pid, process] : processes) {
        if (!process.listed) continue;
        VNTableEntry& entry = entries_.emplace_back();
        entry.pid = pid;
        entry.parent = process.parent;
        entry.uid = process.uid;
        entry.flags = process.flags;
        entry.start = process.start;
        entry.name = process.name.c_str();
        entry.path = full ? process.path.c_str() : "";
        if (!full || !process.cpu) continue;
        entry.cpu = *process.cpu;
        entry.memory = process.memory;
        entry.wakeups = process.wakeups;
        entry.hasUsage = 1;
    }
    return std::span<const VNTableEntry>(entries_);
}

std::optional<Probes::Identity> FakeProbes::identity(std::int32_t pid) {
    const FakeProcess* const process = find(pid);
    if (process == nullptr) return std::nullopt;
    return Identity{process->start, process->uid};
}

std::optional<std::string> FakeProbes::path(std::int32_t pid) {
    ++calls.paths;
    const FakeProcess* const process = find(pid);
    if (process == nullptr || process->path.empty()) return std::nullopt;
    return process->path;
}

std::optional<std::string> FakeProbes::cwd(std::int32_t pid) {
    ++calls.cwds;
    const FakeProcess* const process = find(pid);
    return process == nullptr ? std::nullopt : process->cwd;
}

std::optional<std::string> FakeProbes::arguments(std::int32_t pid) {
    ++calls.arguments;
    const FakeProcess* const process = find(pid);
    return process == nullptr ? std::nullopt : process->arguments;
}

std::optional<std::vector<std::uint16_t>> FakeProbes::ports(std::int32_t pid) {
    ++calls.ports;
    const FakeProcess* const process = find(pid);
    return process == nullptr ? std::nullopt : process->ports;
}

std::unique_ptr<DiskWalk> FakeProbes::walkDisk(const std::string& path, DiskScope scope) {
    const auto tree = trees.find(path);
    return tree == trees.end() ? nullptr : std::make_unique<FakeDiskWalk>(tree->second, scope);
}

std::int32_t FakeProbes::exists(std::int32_t pid) {
    if (const auto answer = existsAnswers.find(pid); answer != existsAnswers.end()) return answer->second;
    return find(pid) == nullptr ? ESRCH : 0;
}

std::int32_t FakeProbes::signalChecked(std::int32_t pid, std::uint64_t start, std::uint32_t uid,
                                       std::int32_t signal) {
    constexpr std::int32_t identityChanged = 70;
    const FakeProcess* const process = find(pid);
    std::int32_t answer = 0;
    if (pid < 2 || uid != user) {
        answer = EPERM;
    } else if (signal != 15 && signal != 9) {
        answer = EINVAL;
    } else if (process == nullptr) {
        answer = ESRCH;
    } else if (process->start != start || process->uid != uid) {
        answer = identityChanged;
    }
    sent.push_back({pid, start, uid, signal, answer});
    if (answer == 0 && onSignal) onSignal(pid, signal);
    return answer;
}

} // namespace varnet
