#include "VarnetCore/Storage/ActivePaths.h"

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>

namespace varnet {

namespace {

constexpr std::int32_t nobody = 0; ///< parent of what the kernel started

struct Place {
    std::int32_t parent;
    bool ours;
};

using Places = std::unordered_map<std::int32_t, Place>;

/// Where the nearest ancestor of this user stands whose folder can be read.
std::optional<std::string> ancestorsFolder(Probes& probes, const Places& places, std::int32_t pid) {
    // A list read while processes come and go can hold a circle: no chain is longer than the list.
    for (std::size_t step = 0; step < places.size(); ++step) {
        const auto place = places.find(pid);
        if (place == places.end()) return std::nullopt;
        pid = place->second.parent;
        const auto parent = places.find(pid);
        if (parent == places.end() || !parent->second.ours) continue;
        if (auto folder = probes.cwd(pid); folder && !folder->empty()) return folder;
    }
    return std::nullopt;
}

} // namespace

std::expected<std::vector<std::string>, StorageCleanupError> activePaths(Probes& probes) {
    const auto table = probes.table(false);
    if (!table || table->empty()) return std::unexpected(StorageCleanupError::incomplete);
    const std::uint32_t user = probes.userID();
    Places places;
    std::vector<std::int32_t> ours;
    for (const VNTableEntry& entry : *table) {
        places[entry.pid] = {entry.parent, entry.uid == user};
        if (entry.uid == user && entry.pid != getpid()) ours.push_back(entry.pid);
    }
    std::vector<std::string> paths;
    for (const std::int32_t pid : ours) {
        auto folder = probes.cwd(pid);
        if (!folder) {
            if (!probes.identity(pid)) continue; // gone
            if (places[pid].parent == nobody) continue;
            folder = ancestorsFolder(probes, places, pid);
            if (!folder) return std::unexpected(StorageCleanupError::incomplete);
        }
        if (!folder->empty()) paths.push_back(*std::move(folder));
        if (auto program = probes.path(pid); program && !program->empty()) {
            paths.push_back(*std::move(program));
        }
    }
    return paths;
}

} // namespace varnet
