#include "VarnetCore/Battery/BatteryTracker.h"

#include <time.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace varnet {

namespace {

bool isMeasured(const ApplicationGroup& group) {
    return std::ranges::any_of(group.processes, [](const SampleRef& process) {
        return process->instantaneousEnergyImpact.has_value();
    });
}

bool isPercent(std::optional<double> value) noexcept {
    return value && *value >= 0 && *value <= 100;
}

/// Year and day of the year in the user's zone.
std::pair<int, int> calendarDay(Date date) {
    const double seconds = std::floor(date.sinceUnixEpoch());
    // Beyond what a calendar can tell, each moment is a day of its own.
    if (!(std::abs(seconds) < 1e11)) return {0, 0};
    const auto time = static_cast<time_t>(seconds);
    struct tm local{};
    localtime_r(&time, &local);
    return {local.tm_year, local.tm_yday};
}

} // namespace

BatteryTracker::BatteryTracker(BatteryArchive archive) : archive_(std::move(archive)) {}

void BatteryTracker::interrupt() {
    currentSessionID_.reset();
    previousDate_.reset();
    previousReading_.reset();
    previousGroupIDs_.clear();
    segment_ = Uuid::random();
    dischargeWindow_ = {};
}

BatteryDashboard BatteryTracker::observe(const BatteryReading& reading,
                                         std::span<const ApplicationGroup> groups, Date at) {
    // Written so that a date that is no number counts as far away.
    const bool believed = std::abs(at - reading.date) <= maximumGap;
    if (reading.availability != BatteryAvailability::available || !believed) {
        interrupt();
        return {reading, publish(), std::nullopt, std::nullopt, std::nullopt};
    }
    std::optional<double> delta;
    if (previousDate_ && at - *previousDate_ > 0 && at - *previousDate_ <= maximumGap)
        delta = at - *previousDate_;
    const bool contiguous = delta && previousReading_ &&
                            previousReading_->availability == BatteryAvailability::available &&
                            previousReading_->state == reading.state;
    if (!contiguous) {
        delta.reset();
        segment_ = Uuid::random();
        dischargeWindow_ = {};
    }
    std::set<std::string> measured;
    for (const ApplicationGroup& group : groups)
        if (isMeasured(group)) measured.insert(group.id);
    std::optional<double> dischargeWatts;
    if (reading.state == BatteryState::onBattery) {
        dischargeWatts = trackSession(reading, groups, measured, at, delta);
    } else {
        currentSessionID_.reset();
    }
    addPoint(reading, at);
    addHealth(reading, at);
    previousDate_ = at;
    previousReading_ = reading;
    previousGroupIDs_ = std::move(measured);
    prune(at);
    return {reading, publish(), currentSessionID_, dischargeWatts, std::nullopt};
}

/// @param measured groups with energy scores now, by id
/// @param delta seconds since the sample before, when the two belong together
/// @return the discharge power averaged over 30 seconds
std::optional<double> BatteryTracker::trackSession(const BatteryReading& reading,
                                                   std::span<const ApplicationGroup> groups,
                                                   const std::set<std::string>& measured, Date at,
                                                   std::optional<double> delta) {
    if (!delta || !currentSessionID_) {
        archive_.sessions.push_back({Uuid::random(), at, at, reading.charge, reading.charge, 0, {}});
        currentSessionID_ = archive_.sessions.back().id;
    }
    const auto session = std::ranges::find(archive_.sessions, *currentSessionID_, &BatterySession::id);
    if (session == archive_.sessions.end()) return std::nullopt;
    touchedSession_ = session->id;
    session->end = at;
    session->endCharge = reading.charge;
    if (!delta) return std::nullopt;
    session->observedSeconds += *delta;
    apportion(*session, groups, measured, *delta);
    if (!reading.watts || *reading.watts > 0) return std::nullopt;
    return dischargeWindow_.record(-*reading.watts, *delta, at);
}

/// Credits an interval to the groups that were measured at both its ends.
void BatteryTracker::apportion(BatterySession& session, std::span<const ApplicationGroup> groups,
                               const std::set<std::string>& measured, double delta) const {
    for (auto& [id, app] : session.apps)
        if (!measured.contains(id) && previousGroupIDs_.contains(id)) app.partial = true;
    for (const ApplicationGroup& group : groups) {
        if (!measured.contains(group.id) || !previousGroupIDs_.contains(group.id)) continue;
        double power = 0;
        bool incomplete = false;
        for (const SampleRef& process : group.processes) {
            power += process->instantaneousEnergyImpact.value_or(0);
            incomplete = incomplete || !process->energyImpact;
        }
        if (!std::isfinite(power) || power < 0) continue;
        const auto held = session.apps.find(group.id);
        if (held == session.apps.end() && power <= 0) continue;
        BatteryAppImpact& app = held == session.apps.end() ? session.apps[group.id] : held->second;
        app.id = group.id;
        app.name = group.name;
        app.scoreSeconds += delta * power;
        app.partial = app.partial || incomplete;
    }
}

void BatteryTracker::addPoint(const BatteryReading& reading, Date at) {
    if (!isPercent(reading.charge)) return;
    if (!archive_.points.empty()) {
        const BatteryPoint& last = archive_.points.back();
        if (last.segment == segment_ && at - last.date < pointInterval) return;
    }
    archive_.points.push_back({at, *reading.charge, reading.state, reading.watts, segment_});
    pointsChanged_ = true;
}

void BatteryTracker::addHealth(const BatteryReading& reading, Date at) {
    if (!isPercent(reading.health)) return;
    const BatteryHealthPoint point{at, *reading.health, reading.cycles};
    if (!archive_.health.empty() && calendarDay(archive_.health.back().date) == calendarDay(at)) {
        archive_.health.back() = point;
    } else {
        archive_.health.push_back(point);
    }
    healthChanged_ = true;
}

void BatteryTracker::prune(Date at) {
    const std::size_t points = archive_.points.size();
    const std::size_t health = archive_.health.size();
    archive_.prune(at);
    pointsChanged_ = pointsChanged_ || archive_.points.size() != points;
    healthChanged_ = healthChanged_ || archive_.health.size() != health;
}

/// Copies what has changed since the last time; the rest is the same as then. A full list of points weighs
/// most of a megabyte and changes once a minute.
const BatteryHistory& BatteryTracker::publish() {
    if (pointsChanged_) published_.points = std::make_shared<const BatteryHistory::Points>(archive_.points);
    if (healthChanged_) published_.health = std::make_shared<const BatteryHistory::Health>(archive_.health);
    pointsChanged_ = false;
    healthChanged_ = false;
    BatteryHistory::Sessions sessions;
    sessions.reserve(archive_.sessions.size());
    auto before = published_.sessions.begin();
    for (const BatterySession& session : archive_.sessions) {
        // Sessions keep their order, and go only one by one.
        const auto same = std::find_if(before, published_.sessions.end(),
                                       [&](const auto& old) { return old->id == session.id; });
        const bool asBefore = same != published_.sessions.end() && touchedSession_ != session.id;
        sessions.push_back(asBefore ? *same : std::make_shared<const BatterySession>(session));
        if (same != published_.sessions.end()) before = same + 1;
    }
    published_.sessions = std::move(sessions);
    touchedSession_.reset();
    return published_;
}

} // namespace varnet
