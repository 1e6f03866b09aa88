#include "VarnetCore/Base/Display.h"

#include <gtest/gtest.h>

#include <limits>

namespace varnet {
namespace {

TEST(Display, ADurationIsTextForAnySpan) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    struct Row {
        const char* oddity;
        double span;
        const char* text;
    };
    for (const Row& row : {
             Row{"ahead", -5000, "0m"},
             Row{"seconds only", 59.9, "0m"},
             Row{"the last second of the hour", 3599.9, "59m"},
             Row{"the hour", 3600, "1h 0m"},
             Row{"no number", std::numeric_limits<double>::quiet_NaN(), "0m"},
             Row{"endless", infinite, "277777777777h 46m"},
             Row{"endlessly ahead", -infinite, "0m"},
         }) {
        EXPECT_EQ(Display::duration(Date{0}, Date{row.span}), row.text) << row.oddity;
    }
}

} // namespace
} // namespace varnet
