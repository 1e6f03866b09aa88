#include "VarnetApp/Updates/AppUpdater.h"
#include "tests/VarnetApp/Updates/FakeUpdateFramework.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QSettings>
#include <gtest/gtest.h>

namespace varnet::test {
namespace {

class AppUpdaterTest : public testing::Test {
protected:
    AppUpdater::Setup setup(UpdateFramework* used) {
        return {
            .version = "1.3.0", .build = "7", .defaults = &defaults, .mainQueue = &queue, .framework = used};
    }

    TemporaryFolder folder;
    FakeClock clock;
    HandQueue queue{clock};
    QSettings defaults{QString::fromStdString(folder.path("settings.ini")), QSettings::IniFormat};
    FakeUpdateFramework framework;
    AppUpdater updater{setup(&framework)};
};

TEST_F(AppUpdaterTest, saysWhatTheFrameworkTells) {
    EXPECT_EQ(updater.message(), "Updates install here. No dragging required.");
    EXPECT_FALSE(updater.canCheckForUpdates());
    updater.start();
    EXPECT_TRUE(updater.canCheckForUpdates());
    struct Row {
        const char* name;
        std::function<void(UpdateFramework::Handlers&)> told;
        QString message;
        std::optional<QString> available;
    };
    const Row rows[] = {
        {"found", [](auto& to) { to.didFindValidUpdate("1.4.0"); }, "Version 1.4.0 is ready to install.",
         "1.4.0"},
        {"on its way", [](auto& to) { to.willDownloadUpdate("1.4.0"); }, "Downloading version 1.4.0",
         "1.4.0"},
        {"failed and still to be had", [](auto& to) { to.didAbort(); },
         "Couldn’t finish the update. Try again when you’re ready.", "1.4.0"},
        {"here", [](auto& to) { to.didExtractUpdate(); },
         "Ready to install. The app will restart automatically.", "1.4.0"},
        {"withdrawn", [](auto& to) { to.didNotFindUpdate(); }, "You’re up to date. Version 1.3.0",
         std::nullopt},
    };
    int changes = 0;
    QObject::connect(&updater, &AppUpdater::changed, [&] { ++changes; });
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        changes = 0;
        row.told(framework.handlers);
        row.told(framework.handlers);
        EXPECT_EQ(updater.message(), row.message);
        EXPECT_EQ(updater.availableVersion(), row.available);
        EXPECT_EQ(changes, 1) << "what is told twice notifies once";
    }
    changes = 0;
    framework.busy = true;
    framework.lastCheck = clock.now();
    framework.handlers.stateChanged();
    framework.handlers.stateChanged();
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(updater.sessionInProgress());
    EXPECT_EQ(updater.lastChecked(), clock.now());
}

TEST_F(AppUpdaterTest, startsOnceAndAgainOnlyAfterAFailure) {
    updater.checkForUpdates();
    EXPECT_EQ(framework.checks, 0) << "not before the start";
    framework.error = "No line.";
    updater.start();
    EXPECT_EQ(updater.message(), "Couldn’t start software updates. No line.");
    framework.error.reset();
    updater.start();
    updater.start();
    EXPECT_EQ(framework.starts, 2);
    updater.checkForUpdates();
    EXPECT_EQ(framework.checks, 1);
}

TEST_F(AppUpdaterTest, aPrivateCopyOnlyKeepsTheChoice) {
    AppUpdater idle(setup(nullptr));
    idle.start();
    idle.checkForUpdates();
    idle.openUpdate();
    EXPECT_EQ(idle.message(), "Private preview. Public updates are disabled in this copy.");
    EXPECT_FALSE(idle.canCheckForUpdates());
    EXPECT_TRUE(idle.automaticEnabled());
    idle.setAutomaticEnabled(false);
    EXPECT_FALSE(AppUpdater(setup(nullptr)).automaticEnabled()) << "after the next start";
    EXPECT_FALSE(defaults.contains("sparklePreferencesMigrated"));
}

TEST_F(AppUpdaterTest, anOlderChoiceMovesOnce) {
    struct Row {
        const char* name;
        std::map<QString, bool> before;
        std::optional<bool> own;
    };
    const Row rows[] = {
        {"nothing was chosen", {}, std::nullopt},
        {"off stays off", {{"automaticUpdateChecks", false}}, false},
        {"on stays on", {{"automaticUpdateChecks", true}}, true},
        {"the framework's own wins",
         {{"automaticUpdateChecks", false}, {"SUEnableAutomaticChecks", true}},
         true},
        {"not a second time",
         {{"automaticUpdateChecks", false}, {"sparklePreferencesMigrated", true}},
         std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        defaults.clear();
        for (const auto& [key, value] : row.before)
            defaults.setValue(key, value);
        FakeUpdateFramework another;
        AppUpdater(setup(&another)).start();
        EXPECT_TRUE(defaults.value("sparklePreferencesMigrated").toBool());
        ASSERT_EQ(defaults.contains("SUEnableAutomaticChecks"), row.own.has_value());
        if (row.own) {
            EXPECT_EQ(defaults.value("SUEnableAutomaticChecks").toBool(), *row.own);
        }
    }
}

TEST_F(AppUpdaterTest, nothingTakesOverBeforeTheCleanupEnds) {
    bool cleaning = false;
    int takenOver = 0;
    const auto takeOver = [&] { ++takenOver; };
    updater.installationIsSafe = [&] { return !cleaning; };
    updater.start();
    EXPECT_FALSE(framework.handlers.shouldPostponeRelaunch(takeOver)) << "goes on by itself";
    cleaning = true;
    EXPECT_TRUE(framework.handlers.shouldPostponeRelaunch(takeOver));
    EXPECT_TRUE(framework.handlers.shouldPostponeRelaunch(takeOver)) << "asked twice";
    EXPECT_EQ(updater.message(), "Finishing the current cleanup before restarting…");
    queue.advance(60);
    EXPECT_EQ(takenOver, 0);
    cleaning = false;
    EXPECT_EQ(takenOver, 0);
    queue.advance(2);
    EXPECT_EQ(takenOver, 1);
    EXPECT_EQ(queue.waiting(), 0U);
}

TEST_F(AppUpdaterTest, whatWaitsDoesNotOutliveIt) {
    auto ending = std::make_unique<AppUpdater>(setup(&framework));
    bool takenOver = false;
    ending->installationIsSafe = [] { return false; };
    ending->start();
    EXPECT_TRUE(framework.handlers.shouldPostponeRelaunch([&] { takenOver = true; }));
    ending.reset();
    queue.advance(10);
    EXPECT_FALSE(takenOver);
}

} // namespace
} // namespace varnet::test
