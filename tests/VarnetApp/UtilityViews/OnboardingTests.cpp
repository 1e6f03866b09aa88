#include "tests/VarnetApp/UtilityViews/UtilityStage.h"

namespace varnet::test {

using OnboardingTests = UtilityStage;
using platform::LoginItemStatus;

TEST_F(OnboardingTests, returnAloneFinishesItWithWhatIsProposed) {
    open("OnboardingView", {720, 520});
    EXPECT_EQ(focusedName(), "Start using the app");
    EXPECT_FALSE(store().hasOnboarded());
    key(Qt::Key_Return);
    EXPECT_TRUE(store().hasOnboarded());
    EXPECT_EQ(fakes.loginItem.now, LoginItemStatus::enabled);
    EXPECT_TRUE(updates.automatic);
}

TEST_F(OnboardingTests, whatIsSwitchedOffStaysOff) {
    fakes.loginItem.now = LoginItemStatus::enabled;
    open("OnboardingView", {1040, 720});
    clickOn(knownItem(QAccessible::CheckBox, "Check for updates daily"));
    focus(knownItem(QAccessible::CheckBox, "Launch at login"));
    key(Qt::Key_Space);
    EXPECT_EQ(fakes.loginItem.now, LoginItemStatus::enabled) << "nothing changes before the button";
    clickOn(knownItem(QAccessible::Button, "Start using the app"));
    EXPECT_EQ(fakes.loginItem.now, LoginItemStatus::notRegistered);
    EXPECT_FALSE(updates.automatic);
    fakes.defaults.sync();
    renew();
    EXPECT_TRUE(store().hasOnboarded());
}

TEST_F(OnboardingTests, aPrivateCopyRemembersThatUpdatesAreUnwanted) {
    privateCopy = true;
    open("OnboardingView", {1040, 720});
    clickOn(knownItem(QAccessible::CheckBox, "Check for updates daily"));
    renew();
    open("OnboardingView", {1040, 720});
    EXPECT_FALSE(known(QAccessible::CheckBox, "Check for updates daily")->state().checked);
}

} // namespace varnet::test
