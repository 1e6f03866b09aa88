#include "VarnetApp/Components/HeadlineBreak.h"

#include <gtest/gtest.h>

namespace varnet {
namespace {

TEST(HeadlineBreak, givesThePunchlineItsOwnLine) {
    struct Row {
        const char* name;
        QString words;
        double width; ///< in letters
        std::optional<QString> expected;
    };
    const Row rows[] = {
        {"one line stays whole", "All quiet. For now.", 19, "All quiet. For now."},
        {"between sentences", "The agent clocked out. The server didn’t.", 30,
         "The agent clocked out.\nThe server didn’t."},
        {"uneven, but both halves fit", "Well. It has a very long list of demands.", 36,
         "Well.\nIt has a very long list of demands."},
        {"half too wide: most even instead", "Well. It has a very long list of demands.", 30,
         "Well. It has a very\nlong list of demands."},
        {"three sentences: before the last", "It ran. It won. It never left.", 20,
         "It ran. It won.\nIt never left."},
        {"last one alone leaves too much before it", "It ran and it ran. It won it all. Ha.", 20,
         "It ran and it ran.\nIt won it all. Ha."},
        {"sentence that ends inside quotes", "It said “done.” It was not.", 20,
         "It said “done.”\nIt was not."},
        {"a number's point ends nothing", "Version 3.5 of the same old story again", 22,
         "Version 3.5 of the\nsame old story again"},
        {"three lines would be needed", "one two three four five six seven", 12, std::nullopt},
        {"a word too wide for any line", "Incomprehensibilities", 12, std::nullopt},
        {"blanks in excess", "  All   quiet. ", 12, "All quiet."},
        {"nothing", "", 12, ""},
        {"no room yet", "All quiet.", 0, std::nullopt},
    };
    for (const Row& row : rows) {
        const auto letters = [](const QString& piece) { return static_cast<double>(piece.size()); };
        EXPECT_EQ(brokenHeadline(row.words, row.width, letters), row.expected) << row.name;
    }
}

TEST(HeadlineBreak, takesAThirdLineOnlyWhenTwoAreNotEnough) {
    struct Row {
        const char* name;
        QString words;
        QString expected;
    };
    for (const Row& row :
         {Row{"two will do", "one two three four", "one two\nthree four"},
          Row{"most even", "one two three four five six seven", "one two three\nfour five\nsix seven"},
          Row{"sentences first", "It ran. It won it all. Never left.",
              "It ran.\nIt won it all.\nNever left."}}) {
        const auto letters = [](const QString& piece) { return static_cast<double>(piece.size()); };
        EXPECT_EQ(brokenHeadline(row.words, 14, letters, 3), row.expected) << row.name;
    }
}

} // namespace
} // namespace varnet
