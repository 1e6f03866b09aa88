#include "VarnetCore/Base/Display.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>

namespace varnet {
namespace {

TEST(Display, ADurationIsTextForAnySpan) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    using Row = std::tuple<const char*, double, const char*>;
    for (const auto& [oddity, span, text] : {
             Row{"ahead", -5000, "0m"},
             Row{"seconds only", 59.9, "0m"},
             Row{"the last second of the hour", 3599.9, "59m"},
             Row{"the hour", 3600, "1h 0m"},
             Row{"no number", std::numeric_limits<double>::quiet_NaN(), "0m"},
             Row{"endless", infinite, "277777777777h 46m"},
             Row{"endlessly ahead", -infinite, "0m"},
         }) {
        EXPECT_EQ(Display::duration(Date{0}, Date{span}), text) << oddity;
    }
}

} // namespace
} // namespace varnet
