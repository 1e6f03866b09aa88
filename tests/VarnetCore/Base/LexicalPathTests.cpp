#include "VarnetCore/Base/LexicalPath.h"

#include <gtest/gtest.h>

#include <tuple>

namespace varnet {
namespace {

TEST(LexicalPath, Standardized) {
    using Row = std::tuple<const char*, const char*, const char*>;
    for (const auto& [oddity, path, expected] : {
             Row{"root stays root", "/", "/"},
             Row{"slashes only", "////", "/"},
             Row{"trailing slash", "/a/b/", "/a/b"},
             Row{"repeated slash and dot", "/a//./b", "/a/b"},
             Row{"up", "/a/b/../c", "/a/c"},
             Row{"up to the top", "/a/..", "/"},
             Row{"up beyond the top", "/../../a/../..", "/"},
             Row{"three dots are a name", "/a/.../b", "/a/.../b"},
             Row{"relative", "a/./b/..", "a"},
             Row{"relative to nothing", "a/..", ""},
             Row{"relative upwards is kept", "../../a/../b", "../../b"},
             Row{"upwards after a name is gone", "a/../../b", "../b"},
             Row{"nothing", "", ""},
         }) {
        EXPECT_EQ(LexicalPath::standardized(path), expected) << oddity;
    }
}

TEST(LexicalPath, ResolvedAndTakenApart) {
    EXPECT_EQ(LexicalPath::resolved("../x", "/a/b"), "/a/x");
    EXPECT_EQ(LexicalPath::resolved("/x/", "/a/b"), "/x");
    EXPECT_EQ(LexicalPath::resolved("", "/a/b"), "/a/b");
    EXPECT_EQ(LexicalPath::parent("/a/b"), "/a");
    EXPECT_EQ(LexicalPath::parent("/a"), "/");
    EXPECT_EQ(LexicalPath::parent("/"), "/");
    EXPECT_EQ(LexicalPath::lastComponent("/a/b"), "b");
    EXPECT_EQ(LexicalPath::lastComponent("/"), "/");
}

} // namespace
} // namespace varnet
