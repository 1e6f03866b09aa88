#pragma once

#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <optional>
#include <string>

namespace varnet {

/// What the flame talks about: a topic and, for some, the group or the finding behind it.
struct RoastContext {
    std::string topic;
    std::optional<std::string> groupID;
    std::optional<std::string> findingID;

    friend bool operator==(const RoastContext&, const RoastContext&) = default;
};

namespace RoastSubject {

/// Percent of one core at which a group becomes the subject, and down to which it stays.
inline constexpr double groupEnters = 80;
inline constexpr double groupStays = 65;
/// Percent of the whole machine at which its load becomes the subject, and down to which it stays.
inline constexpr double workloadEnters = 35;
inline constexpr double workloadStays = 25;

/// The most telling subject of a snapshot.
/// @param presented what is talked about now; it gives way a little later than it came. Empty: nothing
RoastContext choose(const MonitorSnapshot& snapshot, const std::optional<RoastContext>& presented);

} // namespace RoastSubject
} // namespace varnet
