#pragma once

#include "VarnetCore/Base/Date.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace varnet {

/// The sliding window behind every 30-second average.
class CPUWindow {
public:
    /// Seconds that the window reaches back.
    static constexpr double length = 30;

    /// Adds an interval and returns the average at its end.
    /// @param value percent of one core (or an energy score); negative or non-finite adds nothing
    /// @param duration seconds, above zero, else nothing is added
    /// @return empty when nothing was added
    std::optional<double> record(double value, double duration, Date endingAt);

    /// The average over the window that ends at the given moment, each interval weighted by its part inside;
    /// empty when nothing falls inside.
    std::optional<double> average(Date at) const noexcept;

    /// Intervals held.
    std::size_t count() const noexcept { return samples_.size(); }

private:
    struct Sample {
        Date end;
        double duration; ///< seconds
        double value;
    };
    std::vector<Sample> samples_;
};

} // namespace varnet
