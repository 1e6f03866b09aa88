#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Monitoring/ProcessIdentity.h"

#include <optional>
#include <string>
#include <string_view>

namespace varnet {

/// How sure an attribution is.
enum class Confidence { observed, likely, unknown };

/// "Observed", "Likely" or "Unknown": what files hold and the user reads.
std::string_view rawValue(Confidence confidence) noexcept;
/// Empty for any other text.
std::optional<Confidence> confidenceFromRawValue(std::string_view text) noexcept;

/// Which AI coding agent a process is credited to.
struct Attribution {
    std::string agent;      ///< the agent's display name
    ProcessIdentity origin; ///< the process that was recognised as the agent
    Confidence confidence = Confidence::unknown;
    std::string reason;           ///< the sentence shown to the user
    std::optional<Date> exitedAt; ///< when the origin ended; empty while it lives

    friend bool operator==(const Attribution&, const Attribution&) = default;
};

} // namespace varnet
