#include "VarnetApp/Localization/FanReading.h"
#include "VarnetApp/MainViews/CPUShares.h"
#include "VarnetApp/MainViews/OverviewTexts.h"

#include <gtest/gtest.h>

#include <limits>

namespace varnet {
namespace {

const Figures english{QLocale(QLocale::English, QLocale::UnitedStates)};
constexpr Date now{800'000'000};
constexpr std::uint64_t gb = 1ULL << 30;

TEST(OverviewTexts, tellTheAgeOfTheSample) {
    struct Row {
        const char* name;
        double age;
        const char* expected;
    };
    for (const Row& row : {Row{"this instant", 0, "Updated 0s ago"},
                           {"not rounded up", 2.9, "Updated 2s ago"},
                           {"last second", 59.9, "Updated 59s ago"},
                           {"first minute", 60, "Updated 1m ago"},
                           {"hours", 3600 + 300, "Updated 1h 5m ago"},
                           {"a clock set back", -40, "Updated 0s ago"},
                           {"years", 1e9, "Updated 277777h 46m ago"}})
        EXPECT_EQ(OverviewTexts::updated(now - row.age, now), row.expected) << row.name;
    EXPECT_EQ(OverviewTexts::updated(std::nullopt, now), "Updated —");
}

TEST(OverviewTexts, aFailedPassIsAsOldAsWhatItShows) {
    MonitorSnapshot snapshot;
    EXPECT_EQ(OverviewTexts::measuredAt(snapshot), std::nullopt) << "the empty one from before the start";
    snapshot.date = now;
    EXPECT_EQ(OverviewTexts::measuredAt(snapshot), now);
    snapshot.error = "unavailable";
    EXPECT_EQ(OverviewTexts::measuredAt(snapshot), std::nullopt);
    snapshot.history = {{now - 16, 20}, {now - 14, 30}};
    EXPECT_EQ(OverviewTexts::measuredAt(snapshot), now - 14);
}

TEST(OverviewTexts, tellMemoryInOneUnitWhereThereIsOne) {
    struct Row {
        const char* name;
        std::optional<std::uint64_t> used;
        std::uint64_t physical;
        const char* expected;
    };
    for (const Row& row : {Row{"same unit", gb * 179 / 10, 32 * gb, "17.9 of 32 GB RAM"},
                           {"two units", gb / 2, 32 * gb, "512 MB of 32 GB RAM"},
                           {"all of it", 16 * gb, 16 * gb, "16 of 16 GB RAM"},
                           {"not known", std::nullopt, 32 * gb, ""},
                           {"machine not known", gb, 0, ""}})
        EXPECT_EQ(OverviewTexts::memory(row.used, row.physical, english), row.expected) << row.name;
}

TEST(OverviewTexts, countTools) {
    EXPECT_EQ(OverviewTexts::tools(0), "0 recognized tools");
    EXPECT_EQ(OverviewTexts::tools(1), "1 recognized tool");
    EXPECT_EQ(OverviewTexts::tools(2), "2 recognized tools");
}

TEST(OverviewTexts, tellTheTimelineInWords) {
    const std::vector<CPUPoint> history{{Date{0}, 20}, {Date{61}, 66.4}, {Date{3600}, 14}, {Date{3700}, 46}};
    EXPECT_EQ(OverviewTexts::timeline(history, english),
              "CPU now: 46%. Highest: 66% at 00:01:01. Lowest: 14% at 01:00:00.");
    EXPECT_EQ(OverviewTexts::timeline({}, english), "");
    EXPECT_EQ(OverviewTexts::timeOfDay({std::numeric_limits<double>::infinity()}), "—");
}

TEST(FanReading, tellsEveryState) {
    struct Row {
        const char* name;
        FanSnapshot fans;
        FanReading expected;
    };
    const auto available = [](std::vector<Fan> fans) {
        return FanSnapshot{FanAvailability::available, std::move(fans), FanLevel::running, false, now};
    };
    const auto without = [](FanAvailability why) {
        // A speed left over from before must not show.
        return FanSnapshot{why, {{0, 2000, 5600}}, FanLevel::stopped, false, std::nullopt};
    };
    const Row rows[] = {
        {"the fastest of several",
         available({{0, 2790, 6000}, {1, 2840, 5680}}),
         {"2,840 RPM", "Fastest of 2 fans", .5}},
        {"one, top speed not known",
         available({{0, 1180.4, std::nullopt}}),
         {"1,180 RPM", "1 fan · measured speed", std::nullopt}},
        {"standing still is a reading", available({{0, 0, 5600}}), {"0 RPM", "1 fan · measured speed", 0.0}},
        {"available without a fan", available({}), {"—", "No sensor reading", std::nullopt}},
        {"fanless", without(FanAvailability::fanless), {"Fanless", "No fan in this Mac", std::nullopt}},
        {"stale", without(FanAvailability::stale), {"—", "Waiting for fresh readings", std::nullopt}},
        {"unavailable", without(FanAvailability::unavailable), {"—", "Sensor unavailable", std::nullopt}},
    };
    for (const Row& row : rows) {
        const FanReading reading = fanReading(row.fans, english);
        EXPECT_EQ(reading.figure, row.expected.figure) << row.name;
        EXPECT_EQ(reading.detail, row.expected.detail) << row.name;
        EXPECT_EQ(reading.share, row.expected.share) << row.name;
    }
}

ApplicationGroup group(GroupKind kind, std::optional<double> cores) {
    auto process = std::make_shared<ProcessSample>();
    process->averageCPU = cores;
    ApplicationGroup made;
    made.kind = kind;
    made.processes = {std::move(process)};
    return made;
}

TEST(CPUShares, addUpByKind) {
    MonitorSnapshot snapshot;
    snapshot.logicalCores = 4;
    snapshot.groups = {group(GroupKind::application, 80), group(GroupKind::application, std::nullopt),
                       group(GroupKind::system, 4), group(GroupKind::unassigned, 8)};
    EXPECT_EQ(cpuShares(snapshot), (CPUShares{20, 0, 3})) << "no project is no work, not an unknown";
    snapshot.groups = {group(GroupKind::project, std::nullopt), group(GroupKind::system, 900)};
    EXPECT_EQ(cpuShares(snapshot), (CPUShares{0, std::nullopt, 100}));
}

} // namespace
} // namespace varnet
