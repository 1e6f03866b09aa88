#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/ProcessIdentity.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

enum class FindingKind { highCPU, forgotten, duplicate, restarted };

/// "highCPU", "forgotten", "duplicate" or "restarted".
std::string_view rawValue(FindingKind kind) noexcept;

/// A clue for the user to review. It never acts.
struct Finding {
    std::string id; ///< stable key of the incident, and the key under which the user ignores it
    FindingKind kind = FindingKind::highCPU;
    std::string title;
    std::string explanation;
    std::optional<std::string> groupID; ///< the group to open; empty when there is none
    std::vector<ProcessIdentity> targets;
    Date firstSeen;

    friend bool operator==(const Finding&, const Finding&) = default;
};

} // namespace varnet
