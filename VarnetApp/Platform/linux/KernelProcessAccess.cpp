#include "VarnetApp/Platform/linux/KernelProcessAccess.h"

#include "VarnetApp/Platform/linux/ControlGroupFile.h"
#include "probes/vn_probes.h"

#include <array>
#include <span>

namespace varnet::platform {

std::optional<std::vector<RunningProcess>> KernelProcessAccess::processes() {
    if (!table_) table_.reset(vn_table_open());
    const VNTableEntry* rows = nullptr;
    const std::int32_t count = table_ ? vn_table_read(table_.get(), 1, &rows) : -1;
    if (count < 0) {
        return std::nullopt;
    }
    std::vector<RunningProcess> processes;
    processes.reserve(static_cast<std::size_t>(count));
    paths_.clear();
    for (const VNTableEntry& row : std::span(rows, static_cast<std::size_t>(count))) {
        if ((row.flags & VN_FLAG_SYSTEM) == 0) {
            processes.push_back({row.pid, row.parent, row.uid, row.start});
            paths_.emplace(row.pid, row.path);
        }
    }
    return processes;
}

std::optional<ProcessAccess::Identity> KernelProcessAccess::identity(std::int32_t pid) {
    Identity identity;
    if (vn_identity(pid, &identity.start, &identity.uid) != 0) {
        return std::nullopt;
    }
    return identity;
}

std::string KernelProcessAccess::executable(std::int32_t pid) {
    if (const auto known = paths_.find(pid); known != paths_.end()) {
        return known->second;
    }
    std::array<char, VN_PATH_SIZE> path{};
    return vn_path(pid, path.data(), path.size()) == 0 ? std::string(path.data()) : std::string();
}

std::string KernelProcessAccess::controlGroup(std::int32_t pid) {
    return readControlGroupFile(pid);
}

} // namespace varnet::platform
