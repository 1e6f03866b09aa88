#include "VarnetApp/HallOfFlame/HallModel.h"
#include "tests/VarnetApp/HallOfFlame/HallStage.h"

#include <QTest>

namespace varnet {

class HallPageTests : public HallStage {
protected:
    int badgesShown() { return find<HallModel>()->badges()->rowCount(); }
    /// Whether the bubble says this, now or in a moment.
    bool says(const QString& words) const {
        return QTest::qWaitFor([&] { return called(words) != nullptr; }, 1000);
    }
    bool saysNoMore(const QString& words) const {
        return QTest::qWaitFor([&] { return called(words) == nullptr; }, 1000);
    }
};

constexpr const char* ghostQuip = "Ghostbuster One less ghost in the machine.";
constexpr const char* lockedRule =
    "Resident hothead Monitor at least 10 minutes on 30 different days. No streak needed.";

TEST_F(HallPageTests, theFilterShowsWhatIsEarnedOrThatNothingIs) {
    open(PreparedCollection::fresh());
    EXPECT_EQ(badgesShown(), 20);
    clickOn("Earned");
    EXPECT_NE(called("Your first one is coming. Switch to All badges to see what you can collect."), nullptr);
    clickOn("Show badges");
    EXPECT_EQ(badgesShown(), 20);
    EXPECT_EQ(item("showBadges"), nullptr);

    clickOn("Earned");
    collection->cleaned(1, 2'000'000'000);
    EXPECT_EQ(badgesShown(), 2) << "what is earned just now comes at once";
    EXPECT_NE(called("Hall of Flame 2"), nullptr) << "and counts in the sidebar";
    EXPECT_EQ(item("showBadges"), nullptr);
    collection->reset();
    EXPECT_NE(called("Hall of Flame 0"), nullptr);
    EXPECT_NE(item("showBadges"), nullptr);
}

TEST_F(HallPageTests, theFinePrintOpensByHoverClickAndKeyboard) {
    open(PreparedCollection::started());
    QTest::mouseMove(view.get(), item("ghost")->mapToScene({72, 60}).toPoint());
    EXPECT_EQ(called(ghostQuip), nullptr) << "a pointer that passes by opens nothing";
    EXPECT_TRUE(says(ghostQuip));
    QTest::mouseMove(view.get(), {600, 60});
    EXPECT_TRUE(saysNoMore(ghostQuip));

    click(item("ghost"));
    EXPECT_TRUE(says(ghostQuip));
    QTest::mouseMove(view.get(), {600, 60});
    QTest::qWait(50);
    EXPECT_NE(called(ghostQuip), nullptr) << "what was pressed for stays";
    click(item("ghost"));
    EXPECT_TRUE(saysNoMore(ghostQuip));
    QTest::mouseMove(view.get(), {600, 60});

    item("first-light")->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_EQ(view->activeFocusItem(), item("ghost"));
    EXPECT_TRUE(says(ghostQuip));
    for (int row = 0; row < 3; ++row)
        key(Qt::Key_Down);
    key(Qt::Key_Left);
    key(Qt::Key_Left);
    EXPECT_EQ(view->activeFocusItem(), item("resident"));
    EXPECT_TRUE(says(lockedRule));
    EXPECT_LT(item("resident")->mapToScene({0, 132}).y(), 720) << "and it is in sight";
    key(Qt::Key_Escape);
    EXPECT_TRUE(saysNoMore(lockedRule));
}

TEST_F(HallPageTests, theWeekFollowsTheChoiceAndTheCalendar) {
    open(PreparedCollection::started());
    EXPECT_NE(called("Servers stopped 11"), nullptr);
    EXPECT_NE(called("Moved to Trash 12.3 GB"), nullptr);
    EXPECT_NE(called("Peak whole Mac CPU 94%"), nullptr);
    item("weekChoice")->forceActiveFocus(Qt::TabFocusReason); // brings it into view
    clickOn("Last week");
    EXPECT_NE(called("Servers stopped 6"), nullptr);
    EXPECT_NE(called("Biggest app appetite Meridian Browser 71%"), nullptr);
    key(Qt::Key_Left);
    EXPECT_NE(called("Servers stopped 11"), nullptr);
    clock.advance(7 * 86'400);
    collection->cleaned(1, 500'000'000);
    EXPECT_NE(called("Servers stopped 0"), nullptr) << "a new week begins while the page is open";
    EXPECT_NE(called("Moved to Trash 500 MB"), nullptr);
}

TEST_F(HallPageTests, troubleWithTheFileIsTold) {
    open(PreparedCollection::started(), Page::hall, folder.path());
    EXPECT_NE(called("Couldn’t read your collection. The saved file is preserved. Reset the collection in "
                     "Settings to start again."),
              nullptr);
}

} // namespace varnet
