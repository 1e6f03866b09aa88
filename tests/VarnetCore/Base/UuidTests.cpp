#include "VarnetCore/Base/Uuid.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace varnet {
namespace {

TEST(Uuid, ReadsEitherCaseAndWritesUpper) {
    const auto uuid = Uuid::fromText("3aa4766f-4F24-40ab-b1d7-b99932c1609D");
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid->text(), "3AA4766F-4F24-40AB-B1D7-B99932C1609D");
    EXPECT_EQ(uuid->bytes[0], 0x3A);
    EXPECT_EQ(uuid->bytes[15], 0x9D);
}

TEST(Uuid, RefusesEveryOtherForm) {
    for (const char* text : {
             "",
             "3AA4766F4F2440ABB1D7B99932C1609D",
             "{3AA4766F-4F24-40AB-B1D7-B99932C1609D}",
             "3AA4766F-4F24-40AB-B1D7-B99932C1609",
             "3AA4766F-4F24-40AB-B1D7-B99932C1609D0",
             "3AA4766F-4F24-40AB-B1D7-B99932C1609G",
             "3AA4766F-4F24-40AB-B1D7B-99932C1609D",
             "3AA4766F 4F24 40AB B1D7 B99932C1609D",
         }) {
        EXPECT_FALSE(Uuid::fromText(text)) << text;
    }
}

TEST(Uuid, RandomOnesAreDistinctAndMarkedVersion4) {
    std::set<Uuid> seen;
    for (int count = 0; count < 1000; ++count) {
        const Uuid uuid = Uuid::random();
        const std::string text = uuid.text();
        EXPECT_EQ(text[14], '4');
        EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos) << text;
        EXPECT_EQ(Uuid::fromText(text), uuid);
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 1000U);
}

} // namespace
} // namespace varnet
