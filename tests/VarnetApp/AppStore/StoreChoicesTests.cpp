#include "tests/VarnetApp/AppStore/StoreOnFakes.h"

#include <QDir>
#include <QUrl>
#include <gtest/gtest.h>

namespace varnet {
namespace {

using platform::LoginItemStatus;

TEST(StoreSettings, whatCannotBeReadIsTheDefault) {
    StoreOnFakes fakes;
    for (const char* key : {"onboarded", "menuCPU", "notifications", "appearance", "notificationDates"})
        fakes.defaults.setValue(key, "{nonsense");
    const StoreSettings settings(&fakes.defaults);
    EXPECT_FALSE(settings.hasOnboarded());
    EXPECT_TRUE(settings.showMenuCPU());
    EXPECT_FALSE(settings.notifications());
    EXPECT_EQ(settings.appearance(), "System");
    EXPECT_TRUE(settings.notificationDates().empty());
}

TEST(StoreSettings, notificationDatesSurviveAnyKey) {
    StoreOnFakes fakes;
    StoreSettings settings(&fakes.defaults);
    const NotificationDates dates{{"cpu:app:/a b/%=\"\\ž.desktop:12", Date{815000000.25}}, {"thermal", {1}}};
    settings.setNotificationDates(dates);
    fakes.defaults.sync();
    EXPECT_EQ(settings.notificationDates(), dates);
}

TEST(VarnetStore, aHundredAndFirstFolderPushesOutTheOldest) {
    StoreOnFakes fakes;
    for (int i = 0; i <= 100; ++i) {
        const QString path = QString::fromStdString(fakes.folder.path("p" + std::to_string(i)));
        QDir().mkpath(path);
        fakes.store->grantProjectAccess(QUrl::fromLocalFile(path));
    }
    const QStringList kept = fakes.store->settings().projectFolders();
    ASSERT_EQ(kept.size(), 100);
    EXPECT_TRUE(kept.front().endsWith("/p1"));
    EXPECT_TRUE(kept.back().endsWith("/p100"));
    EXPECT_EQ(fakes.store->settingsMessage(),
              "Folder access saved. Project metadata will be refreshed on the next sample.");
}

TEST(VarnetStore, aFolderThatIsNoneIsOpenForThisSessionOnlyAndSaysSo) {
    StoreOnFakes fakes;
    fakes.store->grantProjectAccess(QUrl::fromLocalFile(QString::fromStdString(fakes.folder.path("gone"))));
    EXPECT_TRUE(fakes.store->settings().projectFolders().isEmpty());
    EXPECT_EQ(fakes.store->folderAccess().size(), 1);
    EXPECT_TRUE(fakes.store->settingsMessage().startsWith(
        "Folder selected for this session; persistent access could not be saved: "));
}

TEST(VarnetStore, aFolderThatHasMovedBehindALinkIsWrittenBackAndAGoneOneSkipped) {
    StoreOnFakes fakes;
    const QString real = QString::fromStdString(fakes.folder.path("real"));
    const QString link = QString::fromStdString(fakes.folder.path("link"));
    QDir().mkpath(real);
    ASSERT_TRUE(QFile::link(real, link));
    fakes.store->settings().setProjectFolders({link, "/nowhere/at/all"});
    fakes.store->start();
    EXPECT_EQ(fakes.store->folderAccess(), QStringList{real});
    EXPECT_EQ(fakes.store->settings().projectFolders(), (QStringList{real, "/nowhere/at/all"}));
}

TEST(VarnetStore, launchAtLoginFollowsTheSystem) {
    using enum LoginItemStatus;
    StoreOnFakes fakes;
    fakes.loginItem.now = requiresApproval;
    fakes.store->setLogin(true);
    EXPECT_TRUE(fakes.store->loginNeedsApproval()) << "what waits already is not registered again";
    EXPECT_EQ(fakes.loginItem.now, requiresApproval);
    EXPECT_EQ(fakes.store->loginError(), "");

    fakes.loginItem.now = fakes.loginItem.afterRegistering = notRegistered;
    fakes.store->setLogin(true);
    EXPECT_FALSE(fakes.store->launchAtLogin());
    EXPECT_EQ(fakes.store->loginError(),
              "Could not change launch at login. Move the app to Applications and try again.");
}

} // namespace
} // namespace varnet
