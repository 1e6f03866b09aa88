#include "VarnetApp/CloudViews/CloudTexts.h"

#include <gtest/gtest.h>

namespace varnet::test {

TEST(CloudTextsTests, whatAServiceTellsOfADevice) {
    const struct {
        const char* story;
        const char* mode;
        std::optional<std::string> backup;
        std::optional<std::string> archived;
        const char* begins;
    } rows[]{
        {"backed up", "private", "2026-11-21T13:24:00Z", {}, "Last backup 21 November 2026"},
        {"fractions of a second", "private", "2026-11-21T13:24:00.250Z", {}, "Last backup 21 November 2026"},
        {"never", "private", {}, {}, "No backup yet."},
        {"switched off", "off", {}, {}, "No backup"},
        {"a date that is none", "private", "yesterday", {}, "No backup yet."},
        {"archived after it", "off", "2026-06-01T10:00:00Z", "2026-06-02T10:00:00Z", "Archived 2 June 2026"},
    };
    for (const auto& row : rows) {
        CloudDevice device{.id = "a", .name = "a", .platform = "macos", .mode = row.mode};
        device.lastBackupAt = row.backup;
        device.archivedAt = row.archived;
        const QString told = CloudTexts::device(device, QLocale::c());
        EXPECT_TRUE(told.startsWith(row.begins)) << row.story << ": " << told.toStdString();
    }
    EXPECT_EQ(CloudTexts::indexOf("a mode of next year"), 0);
}

} // namespace varnet::test
