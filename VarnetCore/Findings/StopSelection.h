#pragma once

#include "VarnetCore/Findings/StopPlan.h"

#include <map>
#include <span>
#include <string>
#include <vector>

namespace varnet {

/// What the user has ticked in a list. Items are named by the id of their group or service.
struct StopSelection {
    /// What each ticked item stands for; never an empty list.
    std::map<std::string, std::vector<BatchStopRequest>> items;

    /// Of all items, in ascending order of their ids. Repeats stay: the planner drops them.
    std::vector<BatchStopRequest> requests() const;
    /// Unticks an item that is ticked; ticks one that is not, unless there is nothing to request.
    void toggle(const std::string& id, std::vector<BatchStopRequest> requests);
    /// Unticks everything else.
    void retain(std::span<const std::string> ids);
};

} // namespace varnet
