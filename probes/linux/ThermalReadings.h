#pragma once

#include "probes/linux/ProcText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace varnet::probes {

/// How hard heat presses on the machine: what its thermal zones measure against their own trip points, what
/// the devices that cool by throttling are doing, and whether the processors' throttle counters have moved.
/// Remembers between readings: which files there are and what the counters said. One owner, one thread.
class ThermalReadings {
public:
    static constexpr double readingInterval = 5;    ///< seconds between looks at temperatures
    static constexpr double discoveryInterval = 60; ///< and at what there is, trip points among it

    explicit ThermalReadings(std::string sys) : sys_(std::move(sys)) {}

    /// @param seconds of a clock that never steps back, counting through sleep
    /// @return 0 nominal, 1 fair, 2 serious, 3 critical; 0 for a machine that tells nothing
    std::int32_t state(double seconds);

private:
    /// Thousandths of a degree; the lowest point of each kind, empty when there is none to be believed.
    struct Zone {
        std::string temperature; ///< file
        std::optional<std::int64_t> passive;
        std::optional<std::int64_t> hot;
        std::optional<std::int64_t> critical;
    };
    struct Throttle {
        std::string current; ///< file
        std::int64_t maximum = 0;
    };
    struct Counter {
        std::string file;
        std::optional<std::int64_t> last;
    };

    void discover();
    void discoverZones();
    void discoverThrottles();
    void findCounters();
    std::int32_t zonePressure();
    std::int32_t throttlePressure();
    std::int32_t counterPressure();
    std::optional<std::int64_t> value(const std::string& file);

    const std::string sys_;
    ProcText text_;
    std::optional<double> read_;       ///< when temperatures were
    std::optional<double> discovered_; ///< when the files were
    std::int32_t state_ = 0;
    std::vector<Zone> zones_;
    std::vector<Throttle> throttles_;
    std::optional<std::vector<Counter>> counters_; ///< empty until looked for, once
};

} // namespace varnet::probes
