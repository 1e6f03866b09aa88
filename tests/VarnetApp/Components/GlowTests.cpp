#include "VarnetApp/Components/Mascot/Glow.h"

#include <gtest/gtest.h>

#include <cmath>

namespace varnet {
namespace {

TEST(Glow, fallsOffSquaredWithoutBands) {
    const QColor tone(0xFF, 0x7A, 0x45);
    const QImage light = glowImage({400, 400}, {200, 200}, 180, tone, .22);
    // The mean of a ring is what the fall-off says, to a fraction of one step: dithering loses no light.
    for (const double at : {20.0, 60.0, 100.0, 140.0, 170.0}) {
        double sum = 0;
        int count = 0;
        for (int y = 0; y < 400; ++y) {
            for (int x = 0; x < 400; ++x) {
                const QRgb pixel = light.pixel(x, y);
                ASSERT_LE(qRed(pixel), 255);
                const double distance = std::hypot(x + .5 - 200, y + .5 - 200);
                if (std::abs(distance - at) > 3) continue;
                sum += qAlpha(pixel);
                ++count;
            }
        }
        EXPECT_NEAR(sum / count, 255 * .22 * std::pow(1 - at / 180, 2), .35) << at;
    }
    EXPECT_EQ(qAlpha(light.pixel(0, 200)), 0);
    // Premultiplied colours above their alpha would glare.
    for (int x = 0; x < 400; ++x) {
        const auto* row = reinterpret_cast<const QRgb*>(light.constScanLine(190));
        EXPECT_LE(qRed(row[x]), qAlpha(row[x]));
    }
}

TEST(Glow, oddInput) {
    EXPECT_TRUE(glowImage({0, 10}, {0, 0}, 10, Qt::red, 1).isNull());
    EXPECT_TRUE(glowImage({100000, 10}, {0, 0}, 10, Qt::red, 1).isNull());
    for (const double radius : {0.0, -5.0, std::nan("")}) {
        EXPECT_EQ(qAlpha(glowImage({9, 9}, {4, 4}, radius, Qt::red, 1).pixel(4, 4)), 0) << radius;
    }
    EXPECT_EQ(qAlpha(glowImage({9, 9}, {4000, 4000}, 50, Qt::red, 1).pixel(8, 8)), 0) << "light from afar";
}

} // namespace
} // namespace varnet
