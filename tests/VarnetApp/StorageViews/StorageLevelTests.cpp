#include "VarnetApp/StorageViews/StorageLevel.h"
#include "VarnetCore/Storage/StorageScan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varnet {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = StorageLevel::Kind;

StorageProject project(const std::string& path, const std::string& repository, std::uint64_t bytes) {
    StorageProject made;
    made.path = path;
    made.repository = repository;
    made.name = repository;
    made.branch = "branch of " + path;
    made.buckets = {{StorageBucket::git, bytes / 4}, {StorageBucket::files, bytes - bytes / 4}};
    made.partial = false;
    made.measured = true;
    return made;
}

/// One large family of two, one middling, and three below the map's threshold.
std::vector<StorageFamily> families() {
    StorageScan scan;
    scan.projects = {project("/big", "/big", 500),       project("/big-tree", "/big", 300),
                     project("/middle", "/middle", 100), project("/s1", "/s1", 9),
                     project("/s2", "/s2", 8),           project("/s2-tree", "/s2", 1)};
    return scan.families();
}

std::vector<std::string> ids(const StorageLevel& level, const std::vector<StorageFamily>& all = families()) {
    std::vector<std::string> names;
    for (const TreemapTile& tile : StorageLevels::tiles(level, all, false))
        names.push_back(tile.node.id);
    return names;
}

std::vector<std::string> trail(const StorageLevel& level,
                               const std::vector<StorageFamily>& all = families()) {
    std::vector<std::string> names;
    for (const StorageCrumb& crumb : StorageLevels::trail(level, all))
        names.push_back(crumb.title.toStdString());
    return names;
}

TEST(StorageLevelTest, leadsFromFamiliesToBuckets) {
    const auto all = families();
    const StorageLevel top;
    EXPECT_THAT(ids(top), ElementsAre("/big", "/middle", "small-folders"));
    const StorageLevel big = StorageLevels::below(top, "/big", all);
    EXPECT_THAT(ids(big), ElementsAre("/big", "/big-tree"));
    EXPECT_THAT(trail(big), ElementsAre("All projects", "/big"));
    const StorageLevel tree = StorageLevels::below(big, "/big-tree", all);
    EXPECT_THAT(ids(tree), ElementsAre("Project files", "Git data"));
    EXPECT_THAT(trail(tree), ElementsAre("All projects", "/big", "branch of /big-tree"));
    EXPECT_EQ(StorageLevels::below(tree, "Git data", all), tree) << "there is no further";

    const StorageLevel middle = StorageLevels::below(top, "/middle", all);
    EXPECT_EQ(middle.kind, Kind::project) << "a map of one tile would show nothing";
    EXPECT_THAT(trail(middle), ElementsAre("All projects", "/middle"));

    const StorageLevel small = StorageLevels::below(top, "small-folders", all);
    EXPECT_THAT(ids(small), ElementsAre("/s1", "/s2"));
    const StorageLevel inSmall = StorageLevels::below(small, "/s2", all);
    EXPECT_THAT(trail(inSmall), ElementsAre("All projects", "2 more items", "/s2"));
    EXPECT_EQ(StorageLevels::trail(inSmall, all)[1].level, small);
}

TEST(StorageLevelTest, fallsBackToWhatIsStillThere) {
    const auto all = families();
    const std::vector<StorageFamily> none;
    std::vector<StorageFamily> without;
    for (const StorageFamily& family : all)
        if (family.id == "/middle") without.push_back(family);
    std::vector<StorageFamily> shrunk = all;
    for (StorageFamily& family : shrunk)
        std::erase_if(family.members, [](const auto& member) { return member.path.ends_with("-tree"); });
    const struct {
        const char* name;
        StorageLevel level;
        const std::vector<StorageFamily>& after;
        StorageLevel expected;
    } rows[]{
        {"nothing has gone",
         {Kind::project, false, "/big", "/big-tree"},
         all,
         {Kind::project, false, "/big", "/big-tree"}},
        {"the family", {Kind::family, false, "/big"}, without, {}},
        {"the family among small ones, and they", {Kind::family, true, "/s2"}, without, {}},
        {"the project, one is left", {Kind::project, false, "/big", "/big-tree"}, shrunk, {}},
        {"no small ones any more", {Kind::small}, without, {}},
        {"everything", {Kind::project, true, "/s2", "/s2"}, none, {}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const StorageLevel present = StorageLevels::present(row.level, row.after);
        EXPECT_EQ(present, row.expected);
        EXPECT_FALSE(trail(present, row.after).empty());
    }
    EXPECT_THAT(ids({Kind::family, false, "/gone"}), IsEmpty());
    EXPECT_THAT(ids({Kind::project, false, "/gone", "/gone"}), IsEmpty());
}

} // namespace
} // namespace varnet
