#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <map>
#include <string>
#include <vector>

namespace varnet {

/// A notification to the user, in English.
struct Notice {
    std::string key; ///< a later one with the same key replaces it
    std::string title;
    std::string body;

    friend bool operator==(const Notice&, const Notice&) = default;
};

/// When each kind of incident was last told of, by key.
using NotificationDates = std::map<std::string, Date>;

namespace NotificationRules {

/// Seconds within which one incident is told of once.
constexpr double quietTime = 1800;
/// Seconds from which on a sample is too old to tell anything.
constexpr double staleSample = 15;

/// What is to be told now; notes it in the dates, which then hold nothing older than the quiet time.
std::vector<Notice> due(const MonitorSnapshot& snapshot, Date now, NotificationDates& dates);

} // namespace NotificationRules
} // namespace varnet
