#include "VarnetApp/UtilityViews/PanelOrder.h"

#include <gtest/gtest.h>

namespace varnet {
namespace {

std::vector<ApplicationGroup> groupsNamed(const std::string& letters) {
    std::vector<ApplicationGroup> groups;
    for (const char letter : letters) {
        groups.emplace_back();
        groups.back().id = std::string(1, letter);
    }
    return groups;
}

TEST(PanelOrder, rowsStayWhereTheyWere) {
    struct Row {
        const char* name;
        const char* opened; ///< groups when the panel opened, busiest first
        const char* now;
        const char* shown;
    };
    const Row rows[] = {
        {"nothing is known yet", "", "", ""},
        {"opened before the first measurement", "", "dcba", "dcb"},
        {"fewer than three", "ab", "ab", "ab"},
        {"a fourth overtakes", "abc", "dabc", "abc"},
        {"two change places", "abc", "bac", "abc"},
        {"one has gone, and nobody takes its place", "abc", "cdae", "ac"},
        {"one that had gone is back", "abc", "xbca", "abc"},
        {"all have gone", "abc", "xyzw", "xyz"},
        {"fewer than three stay so", "ab", "abc", "ab"},
    };
    for (const Row& row : rows) {
        const auto now = groupsNamed(row.now);
        std::string shown;
        for (const ApplicationGroup* group :
             PanelOrder::top(now, PanelOrder::pinned(groupsNamed(row.opened))))
            shown += group->id;
        EXPECT_EQ(shown, row.shown) << row.name;
    }
}

} // namespace
} // namespace varnet
