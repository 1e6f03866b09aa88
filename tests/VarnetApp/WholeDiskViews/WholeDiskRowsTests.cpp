#include "VarnetApp/WholeDiskViews/WholeDiskRows.h"
#include "VarnetApp/WholeDiskViews/WholeDiskTexts.h"

#include <gtest/gtest.h>

namespace varnet {
namespace {

std::string namesOf(const std::vector<DiskCrumb>& crumbs) {
    std::string names;
    for (const DiskCrumb& crumb : crumbs)
        names += (names.empty() ? "" : " > ") + crumb.name;
    return names;
}

TEST(DiskCrumbs, leadToTheFolder) {
    struct Row {
        const char* name;
        std::optional<std::string> path;
        std::size_t most;
        const char* names;
    };
    for (const Row& row : {
             Row{"top", std::nullopt, 5, "Disk"},
             Row{"two steps", "/home/dana", 5, "Disk > home > dana"},
             Row{"as many as find room", "/a/b/c/d", 5, "Disk > a > b > c > d"},
             Row{"one too many", "/a/b/c/d/e", 5, "Disk > … > c > d > e"},
             Row{"no room at all", "/a/b/c/d/e", 0, "Disk > … > e"},
             Row{"doubled slashes", "//a//b/", 5, "Disk > a > b"},
             Row{"the system's own files", "/", 5, "Disk > /"},
         }) {
        SCOPED_TRACE(row.name);
        const auto crumbs = diskCrumbs(row.path, "Disk", row.most);
        EXPECT_EQ(namesOf(crumbs), row.names);
        EXPECT_TRUE(crumbs.back().current);
        EXPECT_EQ(crumbs.front().key, DiskCrumb::top);
    }
    EXPECT_EQ(diskCrumbs("/a/b/c/d/e", "Disk", 5)[1].key, "/a/b") << "the middle leads to its last step";
    EXPECT_EQ(folderAbove("/a/b"), "/a");
    EXPECT_EQ(folderAbove("/a"), std::nullopt);
}

TEST(WholeDiskNotices, tellEachStateApart) {
    const Figures figures(QLocale("en_US"));
    DiskUsageScan some;
    some.entries.push_back({"/a", "a", true, 5, false});
    DiskUsageScan stopped = some;
    stopped.stopped = true;
    const DiskUsageScan none;
    const std::string failure = "Couldn’t open the disk map. Try rescanning.";
    using State = WholeDiskTexts::State;
    struct Row {
        const char* name;
        State state;
        bool empty;
        const char* title;
        const char* status;
    };
    for (const Row& row : {
             Row{"before the first scan", State{}, true, "See what fills your disk.", ""},
             Row{"a scan that knows nothing yet",
                 State{.started = true, .scanning = true, .itemsChecked = 1'204}, true,
                 "Finding the biggest files…", ""},
             Row{"a scan that knows something", State{.scan = &some, .started = true, .scanning = true},
                 false, "", "Finding the biggest files…"},
             Row{"stopped", State{.scan = &stopped, .started = true}, false, "",
                 "Scan stopped · Showing what we measured"},
             Row{"failed without a map", State{.started = true, .failure = failure}, true,
                 "Couldn’t open the disk map. Try rescanning.", ""},
             Row{"failed over a map", State{.scan = &some, .started = true, .failure = failure}, false, "",
                 "Couldn’t open the disk map. Try rescanning."},
             Row{"no match", State{.scan = &some, .started = true, .searching = true}, true,
                 "No matching items.", ""},
             Row{"no match while scanning",
                 State{.scan = &some, .started = true, .scanning = true, .searching = true}, true,
                 "No matching items.", ""},
             Row{"empty folder", State{.scan = &none, .started = true}, true, "Nothing to see here.", ""},
             Row{"the answer is on its way", State{.started = true}, true, "", ""},
         }) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(WholeDiskTexts::notice(row.state, row.empty, figures).title, row.title);
        EXPECT_EQ(WholeDiskTexts::status(row.state, row.empty).text, row.status);
    }
    EXPECT_EQ(WholeDiskTexts::notice({.scan = &none, .started = true}, true, figures).text,
              "This folder may be empty or require access. Try rescanning.");
    EXPECT_EQ(WholeDiskTexts::showMore(19'993, figures), "Show more (19,993 remaining)");
    EXPECT_EQ(WholeDiskTexts::itemsChecked(48'210, figures), "48,210 items checked");
}

} // namespace
} // namespace varnet
