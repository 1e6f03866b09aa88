#include "VarnetCore/Findings/StopSelection.h"

#include <string_view>
#include <unordered_set>
#include <utility>

namespace varnet {

std::vector<BatchStopRequest> StopSelection::requests() const {
    std::vector<BatchStopRequest> all;
    for (const auto& [id, requests] : items)
        all.insert(all.end(), requests.begin(), requests.end());
    return all;
}

void StopSelection::toggle(const std::string& id, std::vector<BatchStopRequest> requests) {
    if (items.erase(id) > 0 || requests.empty()) return;
    items.emplace(id, std::move(requests));
}

void StopSelection::retain(std::span<const std::string> ids) {
    if (items.empty()) return;
    const std::unordered_set<std::string_view> kept(ids.begin(), ids.end());
    std::erase_if(items, [&](const auto& item) { return !kept.contains(item.first); });
}

} // namespace varnet
