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

TEST(VarnetStore, refusedNotificationsLeaveTheToggleOff) {
    StoreOnFakes fakes;
    fakes.notifications.granted = false;
    fakes.store->setNotifications(true);
    EXPECT_FALSE(fakes.store->notifications());
    EXPECT_EQ(fakes.store->settingsMessage(),
              "Notifications were not allowed. You can enable them in System Settings.");
}

TEST(VarnetStore, launchAtLoginFollowsTheSystem) {
    struct Row {
        const char* name;
        bool enable;
        LoginItemStatus before;
        LoginItemStatus afterRegistering;
        const char* systemError;
        bool launches;
        bool needsApproval;
        const char* error;
    };
    using enum LoginItemStatus;
    const Row rows[] = {
        {"turned on", true, notRegistered, enabled, "", true, false, ""},
        {"waits for approval instead of an error", true, notRegistered, requiresApproval, "", false, true,
         ""},
        {"already waiting is not registered again", true, requiresApproval, enabled, "", false, true, ""},
        {"the system's own words", true, notRegistered, enabled, "disk full", false, false,
         "Could not change launch at login: disk full"},
        {"registered, yet not there", true, notRegistered, notRegistered, "", false, false,
         "Could not change launch at login. Move the app to Applications and try again."},
        {"turned off", false, enabled, enabled, "", false, false, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        StoreOnFakes fakes;
        fakes.loginItem.now = row.before;
        fakes.loginItem.afterRegistering = row.afterRegistering;
        fakes.loginItem.error = row.systemError;
        fakes.store->setLogin(row.enable);
        EXPECT_EQ(fakes.store->launchAtLogin(), row.launches);
        EXPECT_EQ(fakes.store->loginNeedsApproval(), row.needsApproval);
        EXPECT_EQ(fakes.store->loginError(), row.error);
    }
}

} // namespace
} // namespace varnet
