#include "probes/linux/ThermalReadings.h"

#include "probes/linux/ParseSensors.h"
#include "probes/linux/SensorFolder.h"

#include <fcntl.h>

#include <algorithm>
#include <set>

namespace varnet::probes {

namespace {

constexpr std::int32_t fair = 1;
constexpr std::int32_t serious = 2;
constexpr std::int32_t critical = 3;

constexpr std::size_t smallFile = 128;
constexpr std::uint32_t mostTrips = 32;   ///< of one zone
constexpr std::size_t mostCounters = 64;  ///< files read each time
constexpr std::int64_t coldest = -40'000; ///< thousandths of a degree that are believed
constexpr std::int64_t hottest = 150'000;
constexpr std::int64_t lowestTrip = 30'000; ///< firmware that knows no point says 0, or a room's warmth
constexpr std::int64_t criticalMargin = 3'000;

void keepLowest(std::optional<std::int64_t>& kept, std::int64_t point) {
    kept = std::min(kept.value_or(point), point);
}

} // namespace

std::optional<std::int64_t> ThermalReadings::value(const std::string& file) {
    const auto text = text_.read(AT_FDCWD, file.c_str(), smallFile);
    return text ? parseSensorValue(*text) : std::nullopt;
}

std::int32_t ThermalReadings::state(double seconds) {
    if (read_ && seconds - *read_ < readingInterval) return state_;
    if (!discovered_ || seconds - *discovered_ >= discoveryInterval) {
        discover();
        discovered_ = seconds;
    }
    read_ = seconds;
    state_ = std::max({zonePressure(), throttlePressure(), counterPressure()});
    return state_;
}

void ThermalReadings::discover() {
    discoverZones();
    discoverThrottles();
    if (!counters_) findCounters();
}

void ThermalReadings::discoverZones() {
    zones_.clear();
    const std::string folder = sys_ + "/class/thermal";
    for (const std::uint32_t number : numberedEntries(folder, "thermal_zone")) {
        const std::string path = folder + "/thermal_zone" + std::to_string(number);
        Zone zone{.temperature = path + "/temp", .passive = {}, .hot = {}, .critical = {}};
        for (const std::uint32_t trip : numberedEntries(path, "trip_point_", "_type")) {
            if (trip >= mostTrips) break;
            const std::string point = path + "/trip_point_" + std::to_string(trip);
            const auto text = text_.read(AT_FDCWD, (point + "_type").c_str(), smallFile);
            const TripKind kind = text ? parseTripKind(*text) : TripKind::other;
            const auto temperature = value(point + "_temp");
            if (!temperature || *temperature < lowestTrip || *temperature > hottest) continue;
            if (kind == TripKind::passive) keepLowest(zone.passive, *temperature);
            if (kind == TripKind::hot) keepLowest(zone.hot, *temperature);
            if (kind == TripKind::critical) keepLowest(zone.critical, *temperature);
        }
        // A zone without a point of its own has nothing to be held against.
        if (zone.passive || zone.hot || zone.critical) zones_.push_back(std::move(zone));
    }
}

void ThermalReadings::discoverThrottles() {
    throttles_.clear();
    const std::string folder = sys_ + "/class/thermal";
    for (const std::uint32_t number : numberedEntries(folder, "cooling_device")) {
        const std::string path = folder + "/cooling_device" + std::to_string(number);
        const auto type = text_.read(AT_FDCWD, (path + "/type").c_str(), smallFile);
        if (!type || !coolsByThrottling(*type)) continue;
        const auto maximum = value(path + "/max_state");
        if (maximum && *maximum > 0) throttles_.push_back({path + "/cur_state", *maximum});
    }
}

/// One counter for each package and one for each core: hyper-threads share theirs.
void ThermalReadings::findCounters() {
    counters_.emplace();
    const std::string folder = sys_ + "/devices/system/cpu";
    std::set<std::int64_t> packages;
    std::set<std::pair<std::int64_t, std::int64_t>> cores;
    for (const std::uint32_t number : numberedEntries(folder, "cpu")) {
        if (counters_->size() >= mostCounters) return;
        const std::string cpu = folder + "/cpu" + std::to_string(number);
        const std::int64_t package = value(cpu + "/topology/physical_package_id").value_or(0);
        const std::int64_t core = value(cpu + "/topology/core_id").value_or(number);
        const auto add = [&](const char* name) {
            const std::string file = cpu + "/thermal_throttle/" + name;
            const auto count = value(file);
            if (count) counters_->push_back({file, count});
            return count.has_value();
        };
        if (!packages.contains(package) && add("package_throttle_count")) packages.insert(package);
        if (!cores.contains({package, core}) && add("core_throttle_count")) cores.insert({package, core});
    }
}

std::int32_t ThermalReadings::zonePressure() {
    std::int32_t pressure = 0;
    for (const Zone& zone : zones_) {
        const auto temperature = value(zone.temperature);
        if (!temperature || *temperature < coldest || *temperature > hottest) continue;
        if (zone.passive && *temperature >= *zone.passive) pressure = std::max(pressure, fair);
        if (zone.hot && *temperature >= *zone.hot) pressure = std::max(pressure, serious);
        if (zone.critical && *temperature >= *zone.critical - criticalMargin) return critical;
    }
    return pressure;
}

/// Throttled at all is fair, by half or more serious.
std::int32_t ThermalReadings::throttlePressure() {
    std::int32_t pressure = 0;
    for (const Throttle& throttle : throttles_) {
        const auto current = value(throttle.current);
        if (!current || *current <= 0 || *current > throttle.maximum) continue;
        pressure = std::max(pressure, *current >= throttle.maximum - *current ? serious : fair);
    }
    return pressure;
}

/// Moved since the reading before: heat has slowed a processor down meanwhile.
std::int32_t ThermalReadings::counterPressure() {
    std::int32_t pressure = 0;
    for (Counter& counter : *counters_) {
        const auto count = value(counter.file);
        if (count && counter.last && *count > *counter.last) pressure = fair;
        if (count) counter.last = count;
    }
    return pressure;
}

} // namespace varnet::probes
