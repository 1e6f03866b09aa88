#pragma once

#include "VarnetCore/Battery/BatteryArchive.h"

#include <memory>
#include <vector>

namespace varnet {

/// An archive as it stood at one moment, for any thread. What has not changed since the moment before is
/// shared with it, so that carrying a full year about costs next to nothing. Nothing in it is ever null.
struct BatteryHistory {
    using Points = std::vector<BatteryPoint>;
    using Health = std::vector<BatteryHealthPoint>;
    using Sessions = std::vector<std::shared_ptr<const BatterySession>>;

    std::shared_ptr<const Points> points = std::make_shared<const Points>();
    std::shared_ptr<const Health> health = std::make_shared<const Health>();
    Sessions sessions;

    bool empty() const noexcept { return points->empty() && health->empty() && sessions.empty(); }
    /// A copy that stands for itself, for those who write it somewhere.
    BatteryArchive archive() const;
};

} // namespace varnet
