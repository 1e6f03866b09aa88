#include "VarnetApp/UtilityViews/SettingsTexts.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>

namespace varnet {
namespace {

const QLocale english(QLocale::English, QLocale::UnitedStates);
const QLocale czech(QLocale::Czech, QLocale::CzechRepublic);

TEST(SettingsTexts, ignoredFindingsAreNamedByTheirKind) {
    for (const char* const id : {"forgotten:1-4021-7", "restarted:1-4021-7", "cpu", "forgotten:cpu:", ""})
        EXPECT_EQ(SettingsTexts::ignoredFinding(id), "Process finding") << id;
    EXPECT_EQ(SettingsTexts::ignoredFinding("cpu:app:/opt/quill:1700000000"), "High CPU finding");
    EXPECT_EQ(SettingsTexts::ignoredFinding("duplicate:/srv/storefront:vite"), "Similar finding");
}

TEST(SettingsTexts, fansSayHowFastOrWhyNot) {
    FanSnapshot fans{
        FanAvailability::available, {{0, 1200, {}}, {1, 2840, {}}}, FanLevel::stopped, false, {}};
    EXPECT_EQ(SettingsTexts::fans(fans, Figures(english)), "2,840 RPM");
    fans.availability = FanAvailability::stale;
    EXPECT_EQ(SettingsTexts::fans(fans, Figures(english)), "Waiting for fresh readings");
}

TEST(SettingsTexts, momentsAreOfHereAndInTheLanguage) {
    setenv("TZ", "Europe/Prague", 1);
    tzset();
    const Date now = Date::fromUnix(1'795'271'286); // 21 November 2026, 15:28
    const double hour = 3600;
    struct Row {
        const char* name;
        Date date;
        const char* english;
        const char* czech;
    };
    const Row rows[] = {
        {"an hour ago", now - hour, "2:28 PM", "14:28"},
        {"yesterday in London, today here", now - 16 * hour + 40 * 60, "12:08 AM", "0:08"},
        {"yesterday", now - 24 * hour, "November 20, 3:28 PM", "20. listopadu, 15:28"},
        {"from a clock ahead of ours", now + 24 * hour, "November 22, 3:28 PM", "22. listopadu, 15:28"},
        {"nonsense", {std::numeric_limits<double>::infinity()}, "—", "—"},
        {"beyond any calendar", {1e300}, "—", "—"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(SettingsTexts::moment(row.date, now, english), row.english) << row.name;
        EXPECT_EQ(SettingsTexts::moment(row.date, now, czech), row.czech) << row.name;
    }
}

} // namespace
} // namespace varnet
