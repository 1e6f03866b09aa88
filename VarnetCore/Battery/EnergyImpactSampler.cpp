#include "VarnetCore/Battery/EnergyImpactSampler.h"

#include <cmath>

namespace varnet {
namespace {

constexpr double longestGap = 15; // seconds; a longer silence says nothing about the present
constexpr double nanosecondsPerSecond = 1e9;
constexpr double wakeupCost = 0.0005; // seconds of CPU time that one wake-up counts for

} // namespace

EnergyImpact EnergyImpactSampler::sample(const ProcessIdentity& id, std::uint64_t cpu, std::uint64_t wakeups,
                                         Date at) {
    const auto [entry, isNew] = previous_.try_emplace(id);
    Previous& previous = entry->second;
    EnergyImpact impact;
    const double interval = at - previous.date;
    if (!isNew && interval > 0 && interval <= longestGap && cpu >= previous.cpu &&
        wakeups >= previous.wakeups) {
        const double seconds = static_cast<double>(cpu - previous.cpu) / nanosecondsPerSecond +
                               static_cast<double>(wakeups - previous.wakeups) * wakeupCost;
        const double score = seconds / interval * 100;
        if (std::isfinite(score)) impact = {score, previous.window.record(score, interval, at)};
    }
    if (!impact.current) previous.window = {};
    previous.cpu = cpu;
    previous.wakeups = wakeups;
    previous.date = at;
    return impact;
}

void EnergyImpactSampler::retain(const std::unordered_set<ProcessIdentity>& ids) {
    std::erase_if(previous_, [&ids](const auto& entry) { return !ids.contains(entry.first); });
}

} // namespace varnet
