#include "VarnetApp/UtilityViews/PanelOrder.h"

#include <algorithm>

namespace varnet::PanelOrder {

std::vector<std::string> pinned(std::span<const ApplicationGroup> groups) {
    std::vector<std::string> ids;
    for (const ApplicationGroup& group : groups.first(std::min(shown, groups.size())))
        ids.push_back(group.id);
    return ids;
}

std::vector<const ApplicationGroup*> top(std::span<const ApplicationGroup> groups,
                                         std::span<const std::string> pinnedOrder) {
    std::vector<const ApplicationGroup*> result;
    for (const std::string& id : pinnedOrder) {
        const auto found = std::ranges::find(groups, id, &ApplicationGroup::id);
        if (found != groups.end()) result.push_back(&*found);
    }
    if (!result.empty()) return result;
    for (const ApplicationGroup& group : groups.first(std::min(shown, groups.size())))
        result.push_back(&group);
    return result;
}

} // namespace varnet::PanelOrder
