#include "VarnetApp/StorageViews/StorageRows.h"
#include "VarnetCore/Storage/StorageScan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varnet {
namespace {

using testing::ElementsAre;

const QLocale english(QLocale::English, QLocale::UnitedStates);

StorageProject project(const std::string& path, const std::string& branch, std::uint64_t bytes,
                       const std::string& source = "Codex") {
    StorageProject made;
    made.path = path;
    made.repository = "/shop";
    made.name = "shop";
    made.branch = branch;
    made.source = source;
    made.worktree = path != "/shop";
    made.buckets = {{StorageBucket::files, bytes}};
    made.partial = false;
    made.measured = true;
    return made;
}

std::vector<StorageFamily> families() {
    StorageScan scan;
    scan.projects = {project("/w/a", "fix/one", 2'000'000'000), project("/w/b", "fix/two", 5'000'000'000),
                     project("/shop", "main", 1'000'000'000, "Observed project")};
    StorageProject other = project("/other-folder", "trunk", 90'000'000, "Local folder");
    other.repository = "/other-folder";
    other.name = "other";
    other.worktree = false;
    scan.projects.push_back(other);
    return scan.families();
}

std::vector<std::string> lines(const StorageListing& listing,
                               const std::vector<StorageFamily>& all = families()) {
    std::vector<std::string> texts;
    for (const StorageRow& row : listing.rows(all))
        texts.push_back((row.member ? "  " : "") +
                        (row.title + " | " + row.subtitle + " | " + row.figure).toStdString());
    return texts;
}

TEST(StorageRowsTest, searchFindsFamiliesAndTheirFolders) {
    const std::string shop = "shop | 2 worktrees · Codex · Observed project | 8.0 GB";
    const std::string other = "other | Local folder | 90.0 MB";
    const struct {
        const char* name;
        const char* search;
        bool unfolded;
        std::vector<std::string> expected;
    } rows[]{
        {"nothing sought", "", false, {shop, other}},
        {"all unfolded, largest first",
         "",
         true,
         {shop, "  fix/two | Codex | 5.0 GB", "  fix/one | Codex | 2.0 GB",
          "  main | Observed project | 1.0 GB", other}},
        {"a family by name, in any case", "SHOP", false, {shop}},
        {"a worktree by branch unfolds its family", "fix/o", false, {shop, "  fix/one | Codex | 2.0 GB"}},
        {"a folder by its own name", "other-f", false, {other}},
        {"a folder further up does not count", "/w/", false, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(lines({.search = row.search,
                         .unfolded = [&](const std::string&, bool found) { return row.unfolded || found; },
                         .locale = english}),
                  row.expected);
    }
}

TEST(StorageRowsTest, partialIsToldAndPendingIsNot) {
    StorageProject made = project("/shop", "main", 4'000, "Local folder");
    made.worktree = false;
    const struct {
        const char* name;
        bool measured;
        bool partial;
        bool scanning;
        std::uint64_t bytes;
        const char* subtitle;
        const char* figure;
        bool warns;
    } rows[]{
        {"whole", true, false, false, 4'000, "Local folder", "4 KB", false},
        {"measured in part", true, true, false, 4'000, "Partial measurement", "4 KB", true},
        {"measured in part, others to come", true, true, true, 4'000, "Partial measurement", "4 KB", true},
        {"its turn will come", false, true, true, 0, "Waiting for scan", "—", false},
        {"being measured", false, true, true, 4'000, "Waiting for scan", "4 KB", false},
        {"its turn never came", false, true, false, 0, "Partial measurement", "—", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        made.measured = row.measured;
        made.partial = row.partial;
        made.gitSummary = "Waiting for scan";
        made.buckets = {{StorageBucket::files, row.bytes}};
        const StorageListing listing{.scanning = row.scanning, .locale = english};
        const auto shown = listing.rows(std::vector{StorageFamily{"/shop", {made}}});
        ASSERT_EQ(shown.size(), 1);
        EXPECT_EQ(shown[0].subtitle, row.subtitle);
        EXPECT_EQ(shown[0].figure, row.figure);
        EXPECT_EQ(shown[0].warns, row.warns);
    }
}

TEST(StorageRowsTest, namesFromTheDiskAreMadeHarmless) {
    StorageProject made = project("/shop/\xff\n", "evil\n\xE2\x80\xAEhcnarb", 1);
    made.name = "two\nlines";
    const StorageListing listing{.unfolded = [](const auto&, bool) { return true; }, .locale = english};
    const auto rows = listing.rows(std::vector{StorageFamily{"/shop\xff", {made, project("/b", "b", 1)}}});
    ASSERT_EQ(rows.size(), 3);
    for (const StorageRow& row : rows)
        for (const QString& text : {row.title, row.about})
            EXPECT_FALSE(text.contains('\n') || text.contains(QChar(0x202E))) << text.toStdString();
    EXPECT_NE(rows[0].key, rows[1].key);
}

TEST(StorageRowsTest, candidatesTellWhatMovingThemMeans) {
    StorageProject made = project("/shop", "main", 1);
    made.candidates = {{"/shop/.turbo", "/shop", StorageBucket::caches, 10, {}},
                       {"/shop/node_modules", "/shop", StorageBucket::dependencies, 9'000'000, {}}};
    const auto rows =
        candidateRows(made, [](const std::string& path) { return path.ends_with("turbo"); }, english);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].name, "node_modules");
    EXPECT_EQ(rows[0].note, "Reinstall before running this project again");
    EXPECT_EQ(rows[0].figure, "9.0 MB");
    EXPECT_FALSE(rows[0].ticked);
    EXPECT_EQ(rows[1].note, "Rebuilt when the project runs");
    EXPECT_TRUE(rows[1].ticked);
}

} // namespace
} // namespace varnet
