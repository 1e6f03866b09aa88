#include "VarnetApp/AppStore/ItemCount.h"

#include <algorithm>

namespace varnet {

std::optional<std::size_t> itemCount(Page page, const MonitorSnapshot& snapshot, std::size_t unlocked) {
    if (page == Page::storage || page == Page::battery) return std::nullopt;
    if (page == Page::hall) return unlocked;
    if (snapshot.error || (snapshot.processes.empty() && !snapshot.systemCPU)) return std::nullopt;
    if (page == Page::servers) return snapshot.services.size();
    const std::size_t projects = static_cast<std::size_t>(
        std::ranges::count(snapshot.groups, GroupKind::project, &ApplicationGroup::kind));
    if (page == Page::projects) return projects;
    if (page == Page::apps) return snapshot.groups.size() - projects;
    return snapshot.groups.size();
}

} // namespace varnet
