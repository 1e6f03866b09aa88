#include "VarnetApp/Components/Charts/BarGeometry.h"
#include "VarnetApp/Components/Charts/LineGeometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace varnet {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
using Points = std::vector<QPointF>;

TEST(LineGeometry, thinning) {
    struct Row {
        const char* name;
        Points line;
        Points kept;
    };
    const Row rows[] = {
        {"nothing", {}, {}},
        {"one point", {{3, 1}}, {{3, 1}}},
        {"one a column stays", {{0, 1}, {1, 5}, {2, 3}}, {{0, 1}, {1, 5}, {2, 3}}},
        {"peak inside a column survives",
         {{0, 1}, {1.1, 1}, {1.5, 9}, {1.9, 2}, {2, 1}},
         {{0, 1}, {1.1, 1}, {1.5, 9}, {2, 1}}},
        {"fall before peak keeps their order",
         {{0, 5}, {1.1, 2}, {1.5, 9}, {1.9, 5}, {2, 5}},
         {{0, 5}, {1.1, 2}, {1.5, 9}, {2, 5}}},
        {"ends of the line stay", {{.1, 5}, {.2, 1}, {.3, 9}, {.4, 5}}, {{.1, 5}, {.2, 1}, {.3, 9}, {.4, 5}}},
        {"level column is one point",
         {{0, 4}, {1.1, 4}, {1.2, 4}, {1.3, 4}, {2, 4}},
         {{0, 4}, {1.1, 4}, {1.3, 4}, {2, 4}}},
        {"left of the origin", {{-1.9, 1}, {-1.5, 7}, {-1.1, 2}, {-.5, 3}}, {{-1.9, 1}, {-1.5, 7}, {-.5, 3}}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(thinned(row.line, 1), row.kept) << row.name;

    Points week;
    for (int i = 0; i < 20000; ++i)
        week.emplace_back(i * .016, i == 7777 ? 100 : i == 12345 ? -100 : i % 17);
    const Points kept = thinned(week, 1);
    EXPECT_LE(kept.size(), 2 * 321u);
    EXPECT_NE(std::ranges::find(kept, week[7777]), kept.end());
    EXPECT_NE(std::ranges::find(kept, week[12345]), kept.end());
    EXPECT_TRUE(std::ranges::is_sorted(kept, {}, &QPointF::x));
}

TEST(LineGeometry, drawableAndJoined) {
    struct Row {
        const char* name;
        Points points;
        double gap;
        std::vector<std::vector<int>> runs;
        std::vector<int> starts{};
    };
    const Row rows[] = {
        {"no points", {}, 10, {}},
        {"not finite is left out, its neighbours join",
         {{0, 1}, {1, nan}, {infinity, 2}, {2, 3}},
         10,
         {{0, 3}}},
        {"a step back in time is left out", {{5, 1}, {3, 1}, {6, 1}}, 10, {{0, 2}}},
        {"the same time twice stays", {{5, 1}, {5, 9}}, 10, {{0, 1}}},
        {"exactly the gap still joins", {{0, 1}, {10, 1}, {20.5, 1}}, 10, {{0, 1}, {2}}},
        {"no gap given joins all", {{0, 1}, {9999, 1}}, 0, {{0, 1}}},
        {"alone on both sides", {{0, 1}, {20, 1}, {40, 1}}, 10, {{0}, {1}, {2}}},
        {"a line of its own at the same time", {{0, 1}, {5, 1}, {5, 9}, {6, 9}}, 10, {{0, 1}, {2, 3}}, {2}},
        {"starts where nothing can be drawn", {{0, 1}, {nan, 1}, {2, 1}}, 10, {{0}, {2}}, {0, 1, 9}},
        {"each point a start", {{0, 1}, {1, 1}, {2, 1}}, 0, {{0}, {1}, {2}}, {0, 1, 2}},
    };
    for (const Row& row : rows) {
        const std::vector<int> drawable = drawablePoints(row.points);
        std::vector<std::vector<int>> runs;
        for (const auto run : joinedRuns(row.points, drawable, row.gap, row.starts))
            runs.emplace_back(run.begin(), run.end());
        EXPECT_EQ(runs, row.runs) << row.name;
    }
}

TEST(LineGeometry, nearest) {
    const Points points = {{0, 1}, {10, 1}, {12, nan}, {20, 1}};
    const std::vector<int> drawable = drawablePoints(points);
    const std::pair<double, int> rows[] = {{-50, 0}, {0, 0}, {5, 0}, {5.1, 1}, {12, 1}, {15.1, 3}, {99, 3}};
    for (const auto& [time, index] : rows)
        EXPECT_EQ(nearestPoint(points, drawable, time), index) << time;
    EXPECT_EQ(nearestPoint({}, {}, 0), -1);
}

TEST(LineGeometry, bubbleStaysInThePlot) {
    const QRectF plot(0, 10, 300, 100);
    struct Row {
        const char* name;
        double rule;
        double width;
        double left;
    };
    const Row rows[] = {
        {"beside the rule", 100, 80, 108},
        {"just fits", 212, 80, 220},
        {"flips before the edge", 213, 80, 125},
        {"neither side: inside, as near as it goes", 150, 250, 50},
        {"wider than the plot begins with it", 150, 400, 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(bubbleBox({row.width, 24}, row.rule, plot).left(), row.left) << row.name;
}

TEST(LineGeometry, scaleAndLabels) {
    const LineScale scale{.plot = {0, 10, 200, 100}, .from = -900, .to = 0, .low = 80, .high = 100};
    EXPECT_EQ(scale.map({-450, 90}), QPointF(100, 60));
    EXPECT_EQ(scale.map({0, 120}), QPointF(200, 10)) << "above the range stays at its edge";
    EXPECT_EQ(scale.timeAt(50), -675);
    const LineScale flat{.plot = {0, 10, 200, 100}, .from = 5, .to = 5, .low = 7, .high = 7};
    EXPECT_EQ(flat.map({9, 9}), QPointF(0, 110)) << "no range divides by nothing";
    EXPECT_EQ(labelLeft(0, 4, 30, 300), 0);
    EXPECT_EQ(labelLeft(1, 4, 30, 300), 85);
    EXPECT_EQ(labelLeft(3, 4, 30, 300), 270);
    EXPECT_EQ(labelLeft(0, 1, 30, 300), 270);
}

TEST(BarGeometry, lengths) {
    struct Row {
        const char* name;
        double value;
        double length;
    };
    const Row rows[] = {{"nothing", 0, 0},          {"unknown", nan, 0},
                        {"negative", -1, 0},        {"never below its height", .0001, 4},
                        {"half", .5, 50},           {"more than all", 7, 100},
                        {"infinite", infinity, 100}};
    for (const Row& row : rows)
        EXPECT_EQ(barLength(100, 4, row.value), row.length) << row.name;
    EXPECT_EQ(barLength(2, 4, .5), 2) << "not wider than its room";
}

TEST(BarGeometry, segmentsNeverOverlapOrLeave) {
    struct Row {
        const char* name;
        std::vector<double> shares;
        std::vector<std::vector<int>> segments; ///< index, x, width
    };
    const Row rows[] = {
        {"three and idle", {.25, .15, .1}, {{0, 0, 48}, {1, 50, 28}, {2, 80, 18}}},
        {"full ends at the edge", {.5, .5}, {{0, 0, 98}, {1, 100, 100}}},
        {"unknown and empty have none", {nan, 0, .5, -1}, {{2, 0, 98}}},
        {"a sliver is seen", {.5, .0001, .2}, {{0, 0, 98}, {1, 100, 4}, {2, 106, 32}}},
        {"more than a whole is cut", {.9, .9}, {{0, 0, 178}, {1, 180, 20}}},
        {"no room left", {1, .5}, {{0, 0, 200}}},
    };
    for (const Row& row : rows) {
        std::vector<std::vector<int>> segments;
        for (const BarSegment& s : stackedSegments(row.shares, 200))
            segments.push_back({s.index, s.x, s.width});
        EXPECT_EQ(segments, row.segments) << row.name;
    }
    const std::vector<double> crowd(500, .01);
    int edge = 0;
    for (const BarSegment& segment : stackedSegments(crowd, 100)) {
        EXPECT_GE(segment.x, edge);
        edge = segment.x + segment.width;
    }
    EXPECT_LE(edge, 100);
}

} // namespace
} // namespace varnet
