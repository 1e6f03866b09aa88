#include "VarnetApp/Components/PathData.h"

#include <gtest/gtest.h>

#include <string>

namespace varnet {
namespace {

struct Row {
    const char* name;
    std::string data;
    int elements; ///< 0: refused
    QRectF box;
};

TEST(PathData, reads) {
    const Row rows[] = {
        {"lines and close", "M0 0 L10 0 L10 10 Z", 4, {0, 0, 10, 10}},
        {"numbers without blanks between command and minus", "M-1-2L3,-4", 2, {-1, -4, 4, 2}},
        {"repeated numbers after M are lines", "M0 0 5 5 9 1", 3, {0, 0, 9, 5}},
        {"repeated cubics", "M0 0C0 1 1 2 2 2 3 2 4 1 4 0", 7, {0, 0, 4, 2}},
        {"point of a quadratic", "M0 0 Q5 10 10 0", 4, {0, 0, 10, 5}},
        {"fraction without a leading nought", "M.5 .5 L1.5 .5", 2, {.5, .5, 1, 0}},
        {"half circle above, clockwise", "M0 0 A5 5 0 0 1 10 0", 7, {0, -5, 10, 5}},
        {"three quarters by the large flag", "M5 0 A5 5 0 1 1 0 -5", 10, {-5, -5, 10, 10}},
        {"radius too short grows to reach", "M0 0 A1 1 0 0 0 10 0", 7, {0, 0, 10, 5}},
        {"no radius is a line", "M0 0 A0 5 0 0 1 10 0", 2, {0, 0, 10, 0}},
        {"turned ellipse keeps its ends", "M0 0 A4 2 90 0 1 4 0", 7, {0, -4, 4, 4}},
        {"two outlines", "M0 0 L1 0 Z M5 5 L6 5 Z", 6, {0, 0, 6, 5}},
        {"zero-length dot", "M6 6 L6 6", 1, {6, 6, 0, 0}},
        {"nothing", "", 0, {}},
        {"blanks only", " \n\t", 0, {}},
        {"no move first", "L1 1", 0, {}},
        {"relative command", "m0 0 l1 1", 0, {}},
        {"unknown command", "M0 0 H5", 0, {}},
        {"cut off in a pair", "M0 0 L5", 0, {}},
        {"cut off in a cubic", "M0 0 C1 1 2 2 3", 0, {}},
        {"number after close", "M0 0 L1 1 Z 4 4", 0, {}},
        {"not a number", "M0 0 Lnan 4", 0, {}},
        {"infinite", "M0 0 Linf 4", 0, {}},
        {"out of range", "M0 0 L1e400 4", 0, {}},
        {"too far", "M0 0 L1e7 4", 0, {}},
        {"flag that is neither", "M0 0 A5 5 0 2 1 10 0", 0, {}},
        {"far too long", "M0 0" + std::string(40000, ' ') + "L1 1", 0, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const QPainterPath path = pathFromData(row.data);
        EXPECT_EQ(path.elementCount(), row.elements);
        const QRectF box = path.boundingRect();
        EXPECT_NEAR(box.left(), row.box.left(), .01);
        EXPECT_NEAR(box.top(), row.box.top(), .01);
        EXPECT_NEAR(box.right(), row.box.right(), .01);
        EXPECT_NEAR(box.bottom(), row.box.bottom(), .01);
    }
}

} // namespace
} // namespace varnet
