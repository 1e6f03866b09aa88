#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Base/Uuid.h"
#include "VarnetCore/Monitoring/Attribution.h"
#include "VarnetCore/Monitoring/ProcessIdentity.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace varnet {

/// Who started a process, as last seen.
struct SavedLineage {
    ProcessIdentity identity;
    Attribution attribution;
    Date lastSeen;

    friend bool operator==(const SavedLineage&, const SavedLineage&) = default;
};

/// One action of the user.
struct HistoryRecord {
    Uuid id;
    Date date;
    std::string title;
    std::string detail;

    friend bool operator==(const HistoryRecord&, const HistoryRecord&) = default;
};

/// The monitor's memory across restarts of the program: the contents of "history.json". Plain values.
struct SessionArchive {
    std::vector<SavedLineage> lineage;
    std::vector<HistoryRecord> actions;               ///< newest first
    std::map<std::string, Date> ignored;              ///< finding id -> when it was set aside
    std::map<std::string, std::int64_t> roastChoices; ///< the lines shown last

    /// Seconds that an entry of a process no longer seen, an action or an ignored finding is kept.
    static constexpr double retention = 604'800;

    /// Drops what is older than the retention (a living process's entry never is), and all roast choices
    /// when there are more than 500.
    void prune(Date now, const std::unordered_set<ProcessIdentity>& live);

    /// Compact JSON; dates as seconds since 2001-01-01 UTC.
    std::string encode() const;
    /// Empty for anything that is not a whole archive: a missing key, a wrong type, an unknown confidence.
    static std::optional<SessionArchive> decode(std::string_view json);

    friend bool operator==(const SessionArchive&, const SessionArchive&) = default;
};

} // namespace varnet
