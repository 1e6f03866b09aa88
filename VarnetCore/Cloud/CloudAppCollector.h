#pragma once

#include "VarnetCore/Cloud/CloudItem.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace varnet {

/// Adds up what applications use, minute by minute. A plain value for one thread.
class CloudAppCollector {
public:
    /// Seconds between two samples that still count as use; more is a sleep.
    static constexpr double longestGap = 15;

    /// @param aggregationKey tells this run's minutes from those of others; a new one by default
    explicit CloudAppCollector(std::string aggregationKey = newKey());

    /// @return the minutes that have just ended
    std::vector<CloudItem> observe(const MonitorSnapshot& snapshot);

private:
    struct Measure {
        std::string name;
        std::string category;
        double seconds = 0;
        double cpu = 0;    ///< percent of a core times seconds
        double memory = 0; ///< bytes times seconds
    };

    static std::string newKey();
    void add(const ApplicationGroup& group, double seconds, int cores);
    std::vector<CloudItem> flush(Date at, int cores, std::uint64_t ram);

    std::string aggregationKey_;
    std::optional<Date> previous_;
    std::optional<std::int64_t> minute_;
    std::map<std::string, Measure> measures_; ///< of the current minute, by application
};

} // namespace varnet
