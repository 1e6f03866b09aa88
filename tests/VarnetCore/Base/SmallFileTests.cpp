#include "VarnetCore/Base/SmallFile.h"
#include "VarnetCore/Base/Utf8.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <string_view>
#include <tuple>

namespace varnet {
namespace {

using namespace std::string_view_literals;

TEST(SmallFile, ReadsTextUpToTheLimit) {
    const TemporaryFolder folder;
    EXPECT_EQ(readSmallTextFile(folder.write("exact", "12345678"), 8), "12345678");
    EXPECT_EQ(readSmallTextFile(folder.write("larger", "123456789"), 8), std::nullopt);
    EXPECT_EQ(readSmallTextFile(folder.write("empty", ""), 8), "");
    EXPECT_EQ(readSmallTextFile(folder.write("no text", "\xFF"), 8), std::nullopt);
}

TEST(SmallFile, RefusesWhatIsNoRegularFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(readSmallTextFile(folder.path("pipe"), 8), std::nullopt);
    EXPECT_EQ(readSmallTextFile("/dev/zero", 8), std::nullopt);
    EXPECT_EQ(readSmallTextFile(folder.path().string(), 8), std::nullopt);
    EXPECT_EQ(readSmallTextFile(folder.path("missing"), 8), std::nullopt);
    // The system would stop reading the path at its NUL and open another file.
    EXPECT_EQ(readSmallTextFile(folder.write("file", "x") + '\0' + "more", 8), std::nullopt);
}

TEST(Utf8, WellFormedOnly) {
    using Row = std::tuple<const char*, std::string_view, bool>;
    for (const auto& [oddity, bytes, valid] : {
             Row{"every length", "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x94\xA5"sv, true},
             Row{"NUL is a character", "\0"sv, true},
             Row{"highest", "\xF4\x8F\xBF\xBF"sv, true},
             Row{"above the highest", "\xF4\x90\x80\x80"sv, false},
             Row{"overlong slash", "\xC0\xAF"sv, false},
             Row{"overlong in three", "\xE0\x9F\xBF"sv, false},
             Row{"overlong in four", "\xF0\x8F\xBF\xBF"sv, false},
             Row{"surrogate", "\xED\xA0\x80"sv, false},
             Row{"last before the surrogates", "\xED\x9F\xBF"sv, true},
             Row{"cut off", "\xE2\x82"sv, false},
             Row{"continuation alone", "\x80"sv, false},
         }) {
        EXPECT_EQ(isValidUtf8(bytes), valid) << oddity;
    }
}

} // namespace
} // namespace varnet
