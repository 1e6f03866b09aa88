#include "VarnetApp/AppStore/StoreSettings.h"
#include "VarnetApp/Application/DockFlame.h"
#include "VarnetApp/Components/Mascot/MascotPainter.h"
#include "VarnetCore/Monitoring/MonitorSnapshot.h"

#include <gtest/gtest.h>

#include <vector>

namespace varnet::test {

class DockFlameTests : public testing::Test {
protected:
    DockFlameTests() {
        flame.setApplicationIcon = [this](const QImage& image) { shown.push_back(image); };
        flame.setPresence(DockFlame::Presence::regular);
    }

    /// The machine has been this busy for long enough to be believed.
    void stay(double percent) {
        for (int second = 0; second <= 90; second += 5) {
            MonitorSnapshot snapshot;
            snapshot.date = now = now + 5;
            snapshot.systemCPU = percent;
            flame.update(snapshot);
        }
    }

    static QImage drawn(FlameExpression expression) {
        return mascotImage(expression, DockFlame::iconPixels, MascotStyle::tile);
    }

    StoreSettings settings{nullptr};
    DockFlame flame{settings};
    std::vector<QImage> shown; ///< a null one: the application's own
    Date now = Date(800'000'000);
};

TEST_F(DockFlameTests, aStateIsDrawnOnceAndShownTheSameEachTime) {
    stay(5);
    stay(80);
    stay(5);
    stay(80);
    const QImage calm = drawn(FlameExpression::smug);
    const QImage focused = drawn(FlameExpression::focused);
    EXPECT_NE(calm, focused);
    EXPECT_EQ(shown, (std::vector<QImage>{calm, focused, calm, focused}));
    EXPECT_EQ(flame.imagesHeld(), 2U);
}

TEST_F(DockFlameTests, theOwnIconStandsInWhileTheFlameIsStill) {
    stay(5);
    flame.setDynamic(false);
    stay(80);
    flame.setDynamic(true);
    EXPECT_EQ(shown,
              (std::vector<QImage>{drawn(FlameExpression::smug), QImage(), drawn(FlameExpression::focused)}));
}

TEST_F(DockFlameTests, withoutAPlaceInTheDockNothingIsDrawnUntilThereIsOne) {
    flame.refreshPresence();
    stay(5);
    EXPECT_TRUE(shown.empty());
    EXPECT_EQ(flame.imagesHeld(), 0U);
    flame.hasMainWindow = [] { return true; };
    flame.refreshPresence();
    EXPECT_EQ(shown, (std::vector<QImage>{drawn(FlameExpression::smug)}));
}

} // namespace varnet::test
