#include "VarnetApp/BatchActions/ListSelection.h"

#include <ranges>
#include <utility>

namespace varnet {

void ListSelection::setCandidates(Candidates candidates) {
    if (candidates == candidates_) return;
    candidates_ = std::move(candidates);
    std::vector<std::string> ids;
    ids.reserve(candidates_.size());
    for (const std::string& id : candidates_ | std::views::keys)
        ids.push_back(id);
    selection_.retain(ids);
    emit changed();
}

void ListSelection::toggle(const QString& id) {
    const auto found = candidates_.find(id.toStdString());
    if (found == candidates_.end()) return;
    selection_.toggle(found->first, found->second);
    emit changed();
}

void ListSelection::toggleAll() {
    if (all()) {
        selection_.items.clear();
    } else {
        selection_.items = candidates_;
    }
    emit changed();
}

void ListSelection::clear() {
    if (selection_.items.empty()) return;
    selection_.items.clear();
    emit changed();
}

void ListSelection::stop() {
    if (stopping_) stopping_->prepareBatchStop(selection_.requests());
}

} // namespace varnet
