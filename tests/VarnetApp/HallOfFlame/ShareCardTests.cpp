#include "VarnetApp/Components/HeadlineBreak.h"
#include "VarnetApp/Components/Typeface.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/DateTexts.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetApp/ShareCards/ShareCard.h"
#include "VarnetApp/ShareCards/WeeklyCard.h"
#include "VarnetCore/Flame/RoastEngine.h"
#include "VarnetCore/Flame/RoastLibrary.h"

#include <QFontMetricsF>
#include <gtest/gtest.h>

#include <algorithm>

namespace varnet {
namespace {

TEST(DateTexts, weeksSayOnlyWhatDiffers) {
    struct Row {
        const char* name;
        const char* zone;
        Date inside;
        const char* language;
        QString expected;
    };
    for (const Row& row :
         {Row{"within a month", "UTC", {785'246'400}, "en_US", "17–23 November 2025"},
          Row{"Czech", "UTC", {785'246'400}, "cs_CZ", "17.–23. listopadu 2025"},
          Row{"across months", "UTC", {781'012'800}, "en_US", "29 September–5 October 2025"},
          Row{"across years", "UTC", {788'875'200}, "en_US", "29 December 2025–4 January 2026"},
          Row{"the clocks go back on its last day",
              "Europe/Prague",
              {783'172'800},
              "en_US",
              "20–26 October 2025"},
          Row{"already Monday there", "Pacific/Auckland", {785'595'600}, "en_US", "24–30 November 2025"}}) {
        const FlameCalendar calendar(row.zone);
        EXPECT_EQ(DateTexts::week(calendar.week(row.inside), calendar, QLocale(row.language)), row.expected)
            << row.name;
    }
}

/// Nothing on a card may say whose machine it is or where things lie on it.
TEST(ShareCard, tellsNothingPersonal) {
    auto snapshot = std::make_shared<MonitorSnapshot>(*PreparedMachine::manyFindings());
    for (ApplicationGroup& group : snapshot->groups) {
        if (!group.project) continue;
        Project secret = *group.project;
        secret.name = "secret-" + secret.name;
        group.project = std::make_shared<const Project>(secret);
        group.name = secret.name;
    }
    const AppLocalization localization(nullptr);
    const Figures figures(localization.locale());
    const Roast roast = RoastEngine().make(*snapshot, Rotation::allowed);
    const ShareCardSnapshot plain(*snapshot, roast, ProjectNames::left, figures);
    EXPECT_TRUE(plain.projectNames.empty());
    const QString told = ShareCard::description(plain, localization);
    for (const char* const word : {"secret", "/home", "/usr", "node "})
        EXPECT_FALSE(told.contains(word)) << word;

    const ShareCardSnapshot named(*snapshot, roast, ProjectNames::included, figures);
    EXPECT_FALSE(named.projectNames.empty());
    EXPECT_TRUE(std::ranges::is_sorted(named.projectNames));
    EXPECT_EQ(std::ranges::adjacent_find(named.projectNames), named.projectNames.end()) << "each once";
    EXPECT_NE(ShareCard::image(plain, localization), ShareCard::image(named, localization));
}

/// The longest line of the library fits the card in three lines, with a long name in it.
TEST(ShareCard, everyLineFits) {
    const QFontMetricsF smallest(typeface(40, QFont::DemiBold, -0.72));
    for (const auto& [bank, lines] : RoastLibrary::banks()) {
        for (const std::string_view line : lines) {
            QString words = QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size()));
            words.replace("{app}", "A Development Environment");
            const auto measure = [&](const QString& piece) { return smallest.horizontalAdvance(piece); };
            EXPECT_TRUE(brokenHeadline(words, 740, measure, 3)) << words.toStdString();
        }
    }
}

TEST(WeeklyCard, aWeekOfNothingCanBeShared) {
    const AppLocalization localization(nullptr);
    const FlameArchive archive;
    const WeeklyCard card(FlameWeek::containing(archive, {785'246'400}), archive.calendar(), localization,
                          false);
    EXPECT_EQ(card.description(localization), "Your week. Lightly roasted. 17–23 November 2025. 0 servers "
                                              "stopped. 0 KB moved to Trash. 0 badges earned");
    const QImage image = card.image(localization);
    EXPECT_EQ(image.size(), QSize(1080, 1080));
    WeeklyCard example = card;
    example.example = true;
    EXPECT_NE(example.image(localization), image) << "sample data says so";
}

} // namespace
} // namespace varnet
