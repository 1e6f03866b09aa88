#include "VarnetApp/Components/IconPaths.h"
#include "VarnetApp/HallOfFlame/BadgeLook.h"
#include "VarnetApp/HallOfFlame/HallRows.h"
#include "VarnetCore/Hall/FlameBadge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

namespace varnet {
namespace {

const Figures english{QLocale("en_US")};

TEST(HallRows, bestsOfAnyValueHaveWords) {
    struct Row {
        const char* name;
        const char* id;
        double value;
        QString figure;
    };
    for (const Row& row :
         {Row{"small share keeps a decimal", "app", 9.96, "10.0%"}, Row{"large share", "app", 71.4, "71%"},
          Row{"fan", "fan", 4119.6, "4,120 RPM"}, Row{"more than a day", "leftover", 94'440, "26h 14m"},
          Row{"not a minute", "leftover", 59, "0m"},
          Row{"decimal gigabytes", "cleanup", 7'700'000'000.0, "7.7 GB"},
          Row{"rounds up into the next unit", "cleanup", 999'960'000.0, "1 GB"},
          Row{"nothing moved", "cleanup", 0, "0 KB"},
          Row{"damaged file: below nothing", "cleanup", -1, "0 KB"},
          Row{"damaged file: beyond counting", "cleanup", 1e300, "18.4 EB"}}) {
        FlameArchive archive;
        archive.records[row.id] = {row.id, "Quill Editor", row.value, {}};
        const auto rows = HallRows::bests(archive, english);
        ASSERT_EQ(rows.size(), 4U);
        const auto best = std::ranges::find(rows, row.id, &BestRow::key);
        EXPECT_EQ(best->figure, row.figure) << row.name;
        EXPECT_EQ(best->line, best->key == "app" ? "Quill Editor" : "") << row.name;
        EXPECT_EQ(std::ranges::count(rows, QString(), &BestRow::figure), 3) << "the others wait";
    }
}

TEST(HallRows, aWeekOfAnythingAddsUp) {
    FlameWeek week;
    FlameDay day;
    day.stops = std::numeric_limits<std::int64_t>::max();
    day.folders = -3;
    day.trashBytes = std::numeric_limits<std::uint64_t>::max();
    week.days = {day, day};
    const auto rows = HallRows::week(week, english);
    EXPECT_EQ(rows[0].figure, "9,223,372,036,854,775,807") << "a counter does not wrap";
    EXPECT_EQ(rows[1].figure, "18.4 EB");
    EXPECT_EQ(rows[1].note, "0 reviewed folders");
    EXPECT_EQ(rows[3].figure, "—");
    week.days = {FlameDay{}};
    week.days[0].folders = 1;
    EXPECT_EQ(HallRows::week(week, english)[1].note, "1 reviewed folder");
}

TEST(HallRows, everyBadgeHasAnIcon) {
    for (const FlameBadge& badge : FlameBadge::all())
        EXPECT_FALSE(iconPathData(BadgeLook::icon(badge).toStdString()).empty()) << badge.id;
}

} // namespace
} // namespace varnet
