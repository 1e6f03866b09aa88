#include "probes/linux/ProcessList.h"

#include "probes/linux/ProcessReader.h"

#include <fcntl.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace varnet::probes {

namespace {

constexpr std::size_t argumentBlockLimit = 262'144;

} // namespace

std::int32_t collectProcesses(const KernelRoot& root, ListKind kind, VNProcessEntry** list) {
    *list = nullptr;
    ProcessReader reader(root);
    std::vector<std::int32_t> pids;
    if (!reader.listPids(pids) || pids.empty()) return -1;
    std::unique_ptr<VNProcessEntry[], decltype(&std::free)> entries(
        static_cast<VNProcessEntry*>(std::calloc(pids.size(), sizeof(VNProcessEntry))), &std::free);
    if (!entries) return -1;

    std::int32_t count = 0;
    for (const std::int32_t pid : pids) {
        const ProcessFolder folder(root, pid);
        ReadFailure failure{};
        const auto reading = reader.read(folder, pid, failure);
        // A list with holes would pass for processes that have ended.
        if (!reading && failure == ReadFailure::starved) return -1;
        if (!reading || reading->ended) continue;
        VNProcessEntry& entry = entries[static_cast<std::size_t>(count++)];
        entry.pid = pid;
        entry.parent = reading->parent;
        entry.uid = reading->uid;
        entry.flags = reading->flags;
        entry.start = reading->start;
        std::memcpy(entry.name, reading->name.data(), sizeof entry.name);
        if (kind == ListKind::graph) continue;
        ProcessReader::readPath(folder, "exe", entry.path, sizeof entry.path);
        if (!reading->hasUsage) continue;
        entry.cpu = reading->cpu;
        entry.memory = reading->memory;
        entry.wakeups = reading->wakeups;
        entry.hasUsage = 1;
    }
    *list = entries.release();
    return count;
}

std::int32_t identity(const KernelRoot& root, std::int32_t pid, std::uint64_t* start, std::uint32_t* uid) {
    ProcessReader reader(root);
    ReadFailure failure{};
    const auto reading = reader.read(ProcessFolder(root, pid), pid, failure);
    if (!reading || reading->ended || !reading->userKnown) return -1;
    *start = reading->start;
    *uid = reading->uid;
    return 0;
}

std::int32_t path(const KernelRoot& root, std::int32_t pid, char* buffer, std::size_t size) {
    return ProcessReader::readPath(ProcessFolder(root, pid), "exe", buffer, size) ? 0 : -1;
}

std::int32_t cwd(const KernelRoot& root, std::int32_t pid, char* buffer, std::size_t size) {
    return ProcessReader::readPath(ProcessFolder(root, pid), "cwd", buffer, size) ? 0 : -1;
}

std::int32_t arguments(const KernelRoot& root, std::int32_t pid, char* buffer, std::size_t size) {
    if (size > 0) buffer[0] = '\0';
    const std::string file = root.proc + "/" + std::to_string(pid) + "/cmdline";
    ProcText text;
    // One byte more than is used tells whether there is more.
    const auto block = text.read(AT_FDCWD, file.c_str(), argumentBlockLimit + 1);
    if (!block) return -1;
    const bool cut = block->size() > argumentBlockLimit;
    return joinArguments(block->substr(0, argumentBlockLimit), cut, buffer, size) ? 0 : -1;
}

} // namespace varnet::probes
