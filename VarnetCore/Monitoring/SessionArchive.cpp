#include "VarnetCore/Monitoring/SessionArchive.h"

namespace varnet {
namespace {

constexpr std::size_t mostRoastChoices = 500;

} // namespace

void SessionArchive::prune(Date now, const std::unordered_set<ProcessIdentity>& live) {
    const Date cutOff = now - retention;
    std::erase_if(lineage, [&](const SavedLineage& entry) {
        return entry.lastSeen < cutOff && !live.contains(entry.identity);
    });
    std::erase_if(actions, [cutOff](const HistoryRecord& action) { return action.date < cutOff; });
    std::erase_if(ignored, [cutOff](const auto& entry) { return !(entry.second >= cutOff); });
    if (roastChoices.size() > mostRoastChoices) roastChoices.clear();
}

} // namespace varnet
