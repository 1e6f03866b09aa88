#include "VarnetApp/BatteryViews/BatteryCurves.h"
#include "VarnetCore/Battery/BatteryArchive.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace varnet {
namespace {

using enum BatteryState;

constexpr Date zero{0};
constexpr double day = 86'400;

/// "60c2": at 60 s charging (b: on battery, f: full) in the second segment; without a number, in one of its
/// own.
std::vector<BatteryPoint> points(const std::string& text) {
    std::vector<BatteryPoint> made;
    std::istringstream words(text);
    double seconds = 0;
    for (std::string rest; words >> seconds >> rest;) {
        Uuid segment;
        segment.bytes[0] = rest.size() > 1 ? static_cast<std::uint8_t>(rest[1] - '0') : 0;
        const BatteryState state = rest[0] == 'b' ? onBattery : rest[0] == 'c' ? charging : charged;
        made.push_back({Date{seconds}, 50, state, {}, segment});
    }
    return made;
}

TEST(ChargeCurve, partsSegmentsAndMarksWhatWasNotMeasured) {
    struct Row {
        const char* name;
        const char* points;
        double now;
        qsizetype count;
        QList<int> starts;
        QList<QPointF> charging;
        QList<QPointF> missing;
    };
    const Row rows[] = {
        {"nothing at all", "", 1000, 0, {}, {}, {{0, 1000}}},
        {"one line", "0b 60b 120b", 130, 3, {}, {}, {}},
        {"never across two segments, however near",
         "0b1 60b1 62c2 122c2 124f3",
         130,
         5,
         {2, 4},
         {{62, 124}},
         {}},
        {"charging lasts until now", "0c 60c", 90, 2, {}, {{0, 90}}, {}},
        {"but not through a gap", "0c1 60c1 500c2", 510, 3, {2}, {{0, 60}, {500, 510}}, {{60, 500}}},
        {"a hole within one segment", "0b 151b", 160, 2, {1}, {}, {{0, 151}}},
        {"at the longest step still one line", "0b 150b", 300, 2, {}, {}, {}},
        {"before the first and after the last", "400b 460b", 1000, 2, {}, {}, {{0, 400}, {460, 1000}}},
        {"outside the span", "-10b 0b 1001b", 1000, 1, {}, {}, {{0, 1000}}},
        {"a step back in time", "0b1 100c2 50b3 110c2", 110, 3, {1}, {{100, 110}}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ChargeCurve curve = chargeCurve(points(row.points), zero, Date{1000}, Date{row.now});
        EXPECT_EQ(curve.points.size(), row.count);
        EXPECT_EQ(curve.sources.size(), row.count);
        EXPECT_EQ(curve.starts, row.starts);
        EXPECT_EQ(curve.charging, row.charging);
        EXPECT_EQ(curve.missing, row.missing);
    }
}

TEST(HealthCurve, choosesItsSpanAndItsScale) {
    struct Row {
        const char* name;
        std::vector<BatteryHealthPoint> health;
        double days;
        double low;
    };
    const Date now{400 * day};
    const auto ago = [&](double days, double capacity) {
        return BatteryHealthPoint{now - days * day, capacity, {}};
    };
    const Row rows[] = {
        {"none", {}, 30, 80},
        {"today", {ago(0.1, 100)}, 30, 80},
        {"a month", {ago(30, 96), ago(1, 95)}, 30, 80},
        {"a little more", {ago(31, 96)}, 90, 80},
        {"a year", {ago(364, 96)}, 365, 80},
        {"older than all", {ago(399, 96)}, 365, 80},
        {"worn", {ago(2, 79.9)}, 30, 60},
        {"at the line", {ago(2, 80)}, 30, 80},
        {"nonsense below nothing", {ago(2, -50)}, 30, 0},
    };
    for (const Row& row : rows) {
        const HealthCurve curve = healthCurve(row.health, now);
        EXPECT_EQ(curve.days, row.days) << row.name;
        EXPECT_EQ(curve.low, row.low) << row.name;
        EXPECT_EQ(curve.points.size(), static_cast<qsizetype>(row.health.size())) << row.name;
    }
    const std::vector<BatteryHealthPoint> today{ago(0.01, 91)};
    const std::vector<BatteryHealthPoint> later{{today[0].date + 600, 91, {}}};
    EXPECT_EQ(healthCurve(today, now).points, healthCurve(later, now).points)
        << "nothing is drawn anew with each reading";
}

} // namespace
} // namespace varnet
