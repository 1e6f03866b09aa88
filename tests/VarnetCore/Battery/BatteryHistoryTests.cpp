#include "VarnetCore/Battery/BatteryTracker.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace varnet {
namespace {

constexpr Date start{800'000'000};

BatteryReading reading(Date at, BatteryState state, double charge) {
    BatteryReading reading = BatteryReading::missing(BatteryAvailability::available, at);
    reading.state = state;
    reading.charge = charge;
    reading.health = 91;
    reading.watts = -9;
    return reading;
}

std::vector<ApplicationGroup> groups(double score) {
    ProcessSample sample;
    sample.instantaneousEnergyImpact = score;
    sample.energyImpact = score;
    ApplicationGroup group;
    group.id = "app:quill";
    group.name = "Quill Editor";
    group.processes = {std::make_shared<const ProcessSample>(std::move(sample))};
    return {group};
}

/// A day of two-second passes a minute long, with the cable in and out, sleeps, and gaps.
TEST(BatteryHistory, isAtEveryPassWhatTheTrackerHolds) {
    using enum BatteryState;
    BatteryTracker tracker;
    Date now = start;
    struct Stretch {
        const char* name;
        double gap; ///< seconds before it
        BatteryState state;
        int passes;
    };
    std::vector<std::pair<BatteryDashboard, BatteryArchive>> kept;
    for (const Stretch& stretch :
         {Stretch{"on battery", 0, onBattery, 70}, Stretch{"plugged in", 2, charging, 40},
          Stretch{"out again", 2, onBattery, 40}, Stretch{"after a gap", 60, onBattery, 5},
          Stretch{"a week later", 604'000, charged, 5}, Stretch{"a year later", 40'000'000, onBattery, 5},
          Stretch{"the clock set back", -5'000, onBattery, 5}}) {
        SCOPED_TRACE(stretch.name);
        now = now + stretch.gap;
        for (int pass = 0; pass < stretch.passes; ++pass, now = now + 2) {
            const auto dashboard = tracker.observe(reading(now, stretch.state, 80), groups(pass), now);
            ASSERT_EQ(dashboard.archive.archive(), tracker.archive());
            kept.emplace_back(dashboard, tracker.archive());
        }
    }
    for (const auto& [dashboard, then] : kept)
        ASSERT_EQ(dashboard.archive.archive(), then) << "an old dashboard still says what it said";
}

TEST(BatteryHistory, sharesWhatDidNotChange) {
    BatteryArchive archive;
    archive.points.push_back({start - 600, 70, BatteryState::charging, {}, Uuid::random()});
    archive.sessions.push_back({Uuid::random(), start - 900, start - 700, 80, 70, 200, {}});
    BatteryTracker tracker(archive);
    const auto observe = [&](double seconds) {
        const Date at = start + seconds;
        return tracker.observe(reading(at, BatteryState::onBattery, 69), groups(3), at).archive;
    };
    observe(0);
    const BatteryHistory first = observe(2);
    const BatteryHistory second = observe(4);
    EXPECT_EQ(first.points, second.points);
    ASSERT_EQ(second.sessions.size(), 2U);
    EXPECT_EQ(first.sessions[0], second.sessions[0]);
    EXPECT_NE(first.sessions[1], second.sessions[1]) << "the running one has grown";
    const BatteryReading gone = BatteryReading::missing(BatteryAvailability::unavailable, start + 6);
    EXPECT_EQ(tracker.observe(gone, {}, start + 6).archive.sessions, second.sessions);
}

} // namespace
} // namespace varnet
