#include "VarnetApp/CloudViews/CloudTexts.h"

#include <gtest/gtest.h>

namespace varnet::test {

TEST(CloudTextsTests, whatAServiceTellsOfADevice) {
    const struct {
        const char* story;
        CloudDevice device;
        const char* begins;
    } rows[]{
        {"backed up",
         {.id = "a",
          .name = "a",
          .platform = "macos",
          .mode = "private",
          .lastBackupAt = "2026-11-21T13:24:00Z"},
         "Last backup 21 November 2026"},
        {"with fractions of a second",
         {.id = "a",
          .name = "a",
          .platform = "macos",
          .mode = "private",
          .lastBackupAt = "2026-11-21T13:24:00.250Z"},
         "Last backup 21 November 2026"},
        {"never", {.id = "a", .name = "a", .platform = "macos", .mode = "private"}, "No backup yet."},
        {"switched off", {.id = "a", .name = "a", .platform = "macos", .mode = "off"}, "No backup"},
        {"a date that is none",
         {.id = "a", .name = "a", .platform = "macos", .mode = "private", .lastBackupAt = "yesterday"},
         "No backup yet."},
        {"archived after a backup",
         {.id = "a",
          .name = "a",
          .platform = "macos",
          .mode = "off",
          .archivedAt = "2026-06-02T10:00:00Z",
          .lastBackupAt = "2026-06-01T10:00:00Z"},
         "Archived 2 June 2026"},
    };
    for (const auto& row : rows)
        EXPECT_TRUE(CloudTexts::device(row.device, QLocale::c()).startsWith(row.begins))
            << row.story << ": " << CloudTexts::device(row.device, QLocale::c()).toStdString();
    EXPECT_EQ(CloudTexts::indexOf("a mode of next year"), 0);
}

} // namespace varnet::test
