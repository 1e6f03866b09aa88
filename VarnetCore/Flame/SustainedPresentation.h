#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Flame/FlameTiming.h"

#include <optional>

namespace varnet {

/// Shows a value that changes slowly when things calm down, quickly when they get worse, and at once when
/// nothing is known. A plain value; driven by the dates of the samples alone.
template <typename Value>
struct SustainedPresentation {
    std::optional<Value> value;     ///< what is shown
    int severity = -1;              ///< of what is shown; negative: unknown
    std::optional<Value> candidate; ///< what wants to replace it
    std::optional<Date> since;      ///< when the candidate was first wanted
    std::optional<Date> last;       ///< newest sample accepted

    /// Takes a sample. @return the value to show
    const Value& update(const Value& wanted, int wantedSeverity, Date at) {
        if (wantedSeverity < 0) return take(wanted, wantedSeverity, at);
        if (last && at <= *last && value && severity >= 0) return *value;
        if (last && at - *last > FlameTiming::maximumSampleGap) {
            value.reset();
            candidate.reset();
            since.reset();
        }
        last = at;
        if (!value || severity < 0) return take(wanted, wantedSeverity, at);
        if (wanted == *value) {
            candidate.reset();
            since.reset();
            return *value;
        }
        if (candidate != wanted) {
            candidate = wanted;
            since = at;
        }
        if (since && at - *since >= dwell(wantedSeverity)) return take(wanted, wantedSeverity, at);
        return *value;
    }

    friend bool operator==(const SustainedPresentation&, const SustainedPresentation&) = default;

private:
    const Value& take(const Value& wanted, int wantedSeverity, Date at) {
        value = wanted;
        severity = wantedSeverity;
        candidate.reset();
        since.reset();
        last = at;
        return *value;
    }

    double dwell(int wantedSeverity) const noexcept {
        if (wantedSeverity < severity) return FlameTiming::recovery;
        if (wantedSeverity == severity) return FlameTiming::peerChange;
        return wantedSeverity < FlameTiming::urgentSeverity ? FlameTiming::escalation
                                                            : FlameTiming::urgentEscalation;
    }
};

} // namespace varnet
