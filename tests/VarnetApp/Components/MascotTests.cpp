#include "VarnetApp/Components/Mascot/MascotArt.h"
#include "VarnetApp/Components/Mascot/MascotPainter.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace varnet {
namespace {

constexpr int margin = 24;

FlameExpression mood(int index) {
    return static_cast<FlameExpression>(index);
}

/// Paints with room around the box, so that what leaves it is seen.
template <typename Paint>
QImage onCanvas(int side, Paint paint) {
    QImage canvas(side + 2 * margin, side + 2 * margin, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    paint(painter, QRectF(margin, margin, side, side));
    return canvas;
}

struct Painted {
    int inside = 0;
    int outside = 0;
};

Painted painted(const QImage& canvas, const QRectF& box) {
    Painted result;
    for (int y = 0; y < canvas.height(); ++y) {
        for (int x = 0; x < canvas.width(); ++x) {
            if (qAlpha(canvas.pixel(x, y)) == 0) continue;
            ++(box.contains(QPointF(x + .5, y + .5)) ? result.inside : result.outside);
        }
    }
    return result;
}

TEST(Mascot, everyMoodPaintsAtEverySizeAndStaysInItsBox) {
    const std::function<void(QPainter&, const QRectF&, FlameExpression)> styles[] = {
        [](auto& painter, const QRectF& box, auto mood) { paintMascot(painter, box, mood); },
        [](auto& painter, const QRectF& box, auto mood) { paintFlameTile(painter, box, mood); },
        [](auto& painter, const QRectF& box, auto mood) {
            paintSymbolicMascot(painter, box, mood, Qt::black);
        },
    };
    for (const int side : {1, 7, 15, 16, 19, 20, 22, 24, 27, 28, 32, 43, 44, 48, 95, 96, 128, 300}) {
        for (int index = 0; index < flameExpressionCount; ++index) {
            for (const auto& paint : styles) {
                const Painted result =
                    painted(onCanvas(side, [&](auto& painter,
                                               const QRectF& box) { paint(painter, box, mood(index)); }),
                            QRectF(margin, margin, side, side));
                EXPECT_GT(result.inside, 0) << rawValue(mood(index)) << " at " << side;
                EXPECT_EQ(result.outside, 0) << rawValue(mood(index)) << " at " << side;
            }
        }
    }
}

TEST(Mascot, oddBoxesNeverPaintOutside) {
    struct Row {
        const char* name;
        QRectF box;
        double ratio;
        bool paints;
    };
    const Row rows[] = {
        {"between pixels", {10.4, 11.6, 22, 22}, 1, true},
        {"wide box uses its middle", {5, 10, 60, 16}, 1, true},
        {"tall box uses its middle", {10, 5, 16, 60}, 1, true},
        {"no width", {5, 5, 0, 20}, 1, false},
        {"negative", {30, 30, -10, -10}, 1, false},
        {"not a number", {5, 5, qQNaN(), 20}, 1, false},
        {"ratio of nothing counts as one", {5, 5, 20, 20}, 0, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        QImage canvas(80, 80, QImage::Format_ARGB32_Premultiplied);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        paintMascot(painter, row.box, FlameExpression::frazzled, row.ratio);
        paintFlameTile(painter, row.box, FlameExpression::melting, row.ratio);
        const Painted result = painted(canvas, QRectF(row.box.toAlignedRect()));
        EXPECT_EQ(result.inside > 0, row.paints);
        EXPECT_EQ(result.outside, 0);
    }
}

TEST(Mascot, silhouettesDifferAtSixteen) {
    for (const MascotStyle style : {MascotStyle::bare, MascotStyle::symbolic}) {
        std::set<std::vector<bool>> seen;
        for (int index = 0; index < flameExpressionCount; ++index) {
            const QImage image = mascotImage(mood(index), 16, style);
            std::vector<bool> shape;
            for (int y = 0; y < 16; ++y) {
                for (int x = 0; x < 16; ++x)
                    shape.push_back(qAlpha(image.pixel(x, y)) > 127);
            }
            EXPECT_TRUE(seen.insert(shape).second) << rawValue(mood(index));
        }
    }
}

TEST(Mascot, levelFollowsDevicePixels) {
    const std::pair<int, MascotLevel> rows[] = {{1, MascotLevel::tiny},     {19, MascotLevel::tiny},
                                                {20, MascotLevel::small},   {27, MascotLevel::small},
                                                {28, MascotLevel::compact}, {43, MascotLevel::compact},
                                                {44, MascotLevel::mid},     {95, MascotLevel::mid},
                                                {96, MascotLevel::rich},    {4000, MascotLevel::rich}};
    for (const auto& [pixels, level] : rows)
        EXPECT_EQ(mascotLevel(pixels), level) << pixels;

    // Sixteen units at twice the pixels are a face of 32, not a doubled little one.
    QImage dense(32, 32, QImage::Format_ARGB32_Premultiplied);
    dense.fill(Qt::transparent);
    dense.setDevicePixelRatio(2);
    QPainter painter(&dense);
    paintMascot(painter, QRectF(0, 0, 16, 16), FlameExpression::smug, 2);
    painter.end();
    dense.setDevicePixelRatio(1);
    EXPECT_EQ(dense, mascotImage(FlameExpression::smug, 32, MascotStyle::bare));
}

TEST(Mascot, changeStartsAndEndsAsItsMoodsAndNeverLeavesTheBox) {
    for (int index = 1; index < flameExpressionCount; ++index) {
        SCOPED_TRACE(rawValue(mood(index)));
        const auto at = [&](double progress) {
            return onCanvas(128, [&](QPainter& p, const QRectF& b) {
                paintMascotChange(p, b, FlameExpression::smug, mood(index), progress);
            });
        };
        const auto still = [](FlameExpression expression) {
            return onCanvas(128, [&](QPainter& p, const QRectF& b) { paintMascot(p, b, expression); });
        };
        EXPECT_EQ(at(0), still(FlameExpression::smug));
        EXPECT_EQ(at(1), still(mood(index)));
        EXPECT_EQ(at(qQNaN()), still(mood(index)));
        for (const double progress : {.1, .3, .49, .51, .8}) {
            const Painted result = painted(at(progress), QRectF(margin, margin, 128, 128));
            EXPECT_GT(result.inside, 1000);
            EXPECT_EQ(result.outside, 0);
        }
    }
}

TEST(Mascot, refusesImagesOfNoSenseAndKeepsAFaceForStrayMoods) {
    EXPECT_TRUE(mascotImage(FlameExpression::smug, 0, MascotStyle::bare).isNull());
    EXPECT_TRUE(mascotImage(FlameExpression::smug, 100000, MascotStyle::tile).isNull());
    EXPECT_EQ(mascotImage(static_cast<FlameExpression>(99), 64, MascotStyle::bare),
              mascotImage(FlameExpression::confused, 64, MascotStyle::bare));
}

} // namespace
} // namespace varnet
