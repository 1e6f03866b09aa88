#include "VarnetApp/BatteryViews/BatteryRows.h"
#include "VarnetApp/BatteryViews/BatteryTexts.h"
#include "VarnetCore/Battery/BatteryTracker.h"

#include <gtest/gtest.h>

#include <limits>

namespace varnet {
namespace {

using BatteryTexts::Presence;

const QLocale english(QLocale::English, QLocale::UnitedStates);
constexpr Date now{800'000'000}; // 9 May 2026, 06:13:20 UTC
constexpr double hour = 3600;

TEST(BatteryTexts, tellWhatThereIsToShow) {
    BatteryDashboard battery;
    EXPECT_EQ(BatteryTexts::presenceOf(nullptr), Presence::gathering);
    EXPECT_EQ(BatteryTexts::line(nullptr), "Waiting for the first reading.");
    EXPECT_EQ(BatteryTexts::summary(nullptr, english), "Waiting for a reading");
    battery.reading = BatteryReading::missing(BatteryAvailability::absent, now);
    EXPECT_EQ(BatteryTexts::presenceOf(&battery), Presence::none);
    EXPECT_EQ(BatteryTexts::line(&battery), "There is none in this machine.");
    EXPECT_EQ(BatteryTexts::summary(&battery, english), "No battery");
    battery.archive.health =
        std::make_shared<const BatteryHistory::Health>(BatteryHistory::Health{{now - 60, 90, {}}});
    EXPECT_EQ(BatteryTexts::presenceOf(&battery), Presence::gone) << "what an earlier one left is shown";
    EXPECT_EQ(BatteryTexts::readingOf(&battery), nullptr);
    battery.reading = BatteryReading::missing(BatteryAvailability::available, now);
    EXPECT_EQ(BatteryTexts::readingOf(&battery), &battery.reading);
    battery.reading.lowPowerMode = true;
    EXPECT_EQ(BatteryTexts::line(&battery), "Plugged in · Low power mode");
    battery.reading = BatteryReading::missing(BatteryAvailability::unavailable, now);
    EXPECT_EQ(BatteryTexts::line(&battery),
              "The battery isn’t answering. It is asked again every few seconds.");
    EXPECT_EQ(BatteryTexts::summary(&battery, english), "No reading");
}

TEST(BatteryTexts, tellTimeAndPowerAsFarAsTheyAreKnown) {
    struct Row {
        const char* name;
        BatteryState state;
        std::optional<double> minutes; ///< until it is empty, or full
        std::optional<double> watts;
        std::optional<double> averaged;
        const char* told;
        const char* summary;
    };
    using enum BatteryState;
    const std::optional<double> no;
    for (const Row& row : {
             Row{"the average outranks the moment", onBattery, 204, -25, 13,
                 "Time remaining 3 hr 24 min, 13.0 W", "3 hr 24 min · 13.0 W"},
             Row{"an average of nothing is known", onBattery, no, -25, 0, "Time remaining Estimating…, 0.0 W",
                 "Estimating… · 0.0 W"},
             Row{"charging", charging, 80, 12, no, "Time to full 1 hr 20 min, 12.0 W", "Full in 1 hr 20 min"},
             Row{"charging, time unknown", charging, no, 38.4, no, "Time to full Estimating…, 38.4 W",
                 "Charging · 38.4 W"},
             Row{"charging, nothing known", charging, no, no, no, "Time to full Estimating…, —", "Charging"},
             Row{"full", charged, no, 0, no, "State Fully charged, 0.0 W", "Fully charged"},
             Row{"held below full", pluggedIn, no, 0, no, "State Plugged in, 0.0 W", "Plugged in"},
         }) {
        SCOPED_TRACE(row.name);
        BatteryDashboard battery;
        battery.reading = BatteryReading::missing(BatteryAvailability::available, now);
        battery.reading.state = row.state;
        (row.state == charging ? battery.reading.minutesToFull : battery.reading.minutesRemaining) =
            row.minutes;
        battery.reading.watts = row.watts;
        battery.dischargeWatts = row.averaged;
        const BatteryTexts::Captioned time = BatteryTexts::time(&battery);
        EXPECT_EQ(time.label + ' ' + time.figure + ", " + BatteryTexts::power(&battery, english), row.told);
        EXPECT_EQ(BatteryTexts::summary(&battery, english), row.summary);
    }
}

TEST(BatteryTexts, tellASession) {
    EXPECT_EQ(BatteryTexts::measured(29.9), "Under 1 min");
    EXPECT_EQ(BatteryTexts::measured(30), "1 min");
    EXPECT_EQ(BatteryTexts::measured(10'260), "2 hr 51 min");
    EXPECT_EQ(BatteryTexts::measured(2880 * 60.0), "48 hr 0 min");
    EXPECT_EQ(BatteryTexts::measured(2881 * 60.0), "Over 48 hr");
    EXPECT_EQ(BatteryTexts::measured(std::numeric_limits<double>::quiet_NaN()), "Under 1 min");
    struct Row {
        const char* name;
        double startAgo;
        double endAgo;
        const char* expected;
    };
    for (const Row& row : {Row{"today", 2 * hour, hour, "Today 04:13 – 05:13"},
                           Row{"since before midnight", 7 * hour, hour, "Yesterday 23:13 – 05:13"},
                           Row{"earlier", 50 * hour, 49 * hour, "Thu 7 May 04:13 – 05:13"},
                           Row{"the clock was set back", -30 * hour, -31 * hour, "Sun 10 May 12:13 – 13:13"},
                           Row{"beyond every calendar", 1e15, 0, "—"}}) {
        const BatterySession session{{}, now - row.startAgo, now - row.endAgo, 100, {}, 0, {}};
        EXPECT_EQ(BatteryTexts::when(session, now, english), row.expected) << row.name;
        EXPECT_EQ(BatteryTexts::charges(session, english), "100% to —");
    }
}

TEST(BatteryRows, namesTheHungriestFirst) {
    BatterySession session{{}, now - 100, now, 90, 80, 100, {}};
    EXPECT_TRUE(hungriestApps(session, 5, english).empty());
    EXPECT_EQ(sessionRow(session, now, english).apps, "—");
    const double infinite = std::numeric_limits<double>::infinity();
    session.apps = {{"app:a", {"app:a", "Quill", 500, false}},
                    {"project:b", {"project:b", "shop", 2000, true}},
                    {"app:c", {"app:c", "Boardroom", 500, false}},
                    {"app:d", {"app:d", "Broken", infinite, false}},
                    {"process:e", {"process:e", "idle", 0, false}}};
    const auto apps = hungriestApps(session, 4, english);
    ASSERT_EQ(apps.size(), 4U);
    const auto told = [&](std::size_t row) {
        return apps[row].value(1).toString() + ' ' + apps[row].value(5).toString() + ' ' +
               apps[row].value(7).toString();
    };
    EXPECT_EQ(told(0), "shop 20.0 partial");
    EXPECT_EQ(told(1), "Boardroom 5.0 ") << "equals by name";
    EXPECT_EQ(told(2), "Quill 5.0 ");
    EXPECT_EQ(told(3), "idle 0.0 ");
    EXPECT_EQ(apps[0].fraction, 1);
    EXPECT_EQ(apps[2].fraction, 0.25);
    EXPECT_EQ(apps[0].value(2), "projects");
    EXPECT_EQ(sessionRow(session, now, english).apps, "shop, Boardroom, Quill");
    session.observedSeconds = 0;
    EXPECT_EQ(hungriestApps(session, 1, english)[0].value(5), "—") << "nothing was measured: no score";
}

TEST(BatteryRows, worryOnlyOverWhatIsKnown) {
    BatteryDashboard battery;
    battery.reading = BatteryReading::missing(BatteryAvailability::available, now);
    const auto tones = [&] {
        QStringList list;
        for (const BatteryFigure& figure : batteryFigures(&battery, english))
            list.append(figure.value(2).toString());
        return list.join(' ');
    };
    EXPECT_EQ(tones(), "muted muted muted muted muted muted");
    battery.reading.health = 80;
    battery.reading.cycles = 0;
    battery.reading.condition = BatteryCondition::normal;
    EXPECT_EQ(tones(), "good info muted muted good muted");
    battery.reading.health = 79.9;
    battery.reading.condition = BatteryCondition::service;
    EXPECT_EQ(tones(), "warn info muted muted warn muted");
}

} // namespace
} // namespace varnet
