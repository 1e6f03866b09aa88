#include "VarnetApp/BatteryViews/BatteryCurves.h"
#include "VarnetCore/Battery/BatteryArchive.h"

#include <gtest/gtest.h>

#include <vector>

namespace varnet {
namespace {

using enum BatteryState;

constexpr Date zero{0};
constexpr double day = 86'400;

struct At {
    double seconds;
    BatteryState state;
    int segment = 0;
};

std::vector<BatteryPoint> points(std::initializer_list<At> list) {
    std::vector<BatteryPoint> made;
    for (const At& at : list) {
        Uuid segment;
        segment.bytes[0] = static_cast<std::uint8_t>(at.segment);
        made.push_back({Date{at.seconds}, 50, at.state, {}, segment});
    }
    return made;
}

TEST(ChargeCurve, partsSegmentsAndMarksWhatWasNotMeasured) {
    struct Row {
        const char* name;
        std::vector<BatteryPoint> points;
        double now;
        qsizetype count;
        QList<int> starts;
        QList<QPointF> charging;
        QList<QPointF> missing;
    };
    const Row rows[] = {
        {"nothing at all", {}, 1000, 0, {}, {}, {{0, 1000}}},
        {"one line", points({{0, onBattery}, {60, onBattery}, {120, onBattery}}), 130, 3, {}, {}, {}},
        {"a line never crosses two segments, however near",
         points({{0, onBattery, 1},
                 {60, onBattery, 1},
                 {62, charging, 2},
                 {122, charging, 2},
                 {124, charged, 3}}),
         130,
         5,
         {2, 4},
         {{62, 124}},
         {}},
        {"charging lasts until now", points({{0, charging}, {60, charging}}), 90, 2, {}, {{0, 90}}, {}},
        {"but not through a gap",
         points({{0, charging, 1}, {60, charging, 1}, {500, charging, 2}}),
         510,
         3,
         {2},
         {{0, 60}, {500, 510}},
         {{60, 500}}},
        {"a hole within one segment",
         points({{0, onBattery}, {151, onBattery}}),
         160,
         2,
         {1},
         {},
         {{0, 151}}},
        {"at the longest step still one line",
         points({{0, onBattery}, {150, onBattery}}),
         300,
         2,
         {},
         {},
         {}},
        {"before the first and after the last",
         points({{400, onBattery}, {460, onBattery}}),
         1000,
         2,
         {},
         {},
         {{0, 400}, {460, 1000}}},
        {"outside the span",
         points({{-10, onBattery}, {0, onBattery}, {1001, onBattery}}),
         1000,
         1,
         {},
         {},
         {{0, 1000}}},
        {"a step back in time",
         points({{0, onBattery, 1}, {100, charging, 2}, {50, onBattery, 3}, {110, charging, 2}}),
         110,
         3,
         {1},
         {{100, 110}},
         {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const ChargeCurve curve = chargeCurve(row.points, zero, Date{1000}, Date{row.now});
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
