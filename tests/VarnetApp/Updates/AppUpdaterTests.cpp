#include "VarnetApp/Updates/AppUpdater.h"
#include "tests/VarnetApp/Updates/FakeUpdateFramework.h"
#include "tests/fakes/HandQueue.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QSettings>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>

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

TEST_F(AppUpdaterTest, whatIsToldTwiceNotifiesOnce) {
    EXPECT_EQ(updater.message(), "Updates install here. No dragging required.");
    EXPECT_FALSE(updater.canCheckForUpdates());
    updater.start();
    EXPECT_TRUE(updater.canCheckForUpdates());
    const UpdateFramework::Handlers& to = framework.handlers;
    const std::function<void()> rows[] = {
        [&] { to.didFindValidUpdate("1.4.0"); },
        [&] { to.willDownloadUpdate("1.4.0"); },
        [&] { to.didAbort(); },
        [&] { to.didExtractUpdate(); },
        [&] { to.didNotFindUpdate(); },
        [&] {
            framework.busy = true;
            to.stateChanged();
        },
    };
    int changes = 0;
    QObject::connect(&updater, &AppUpdater::changed, [&] { ++changes; });
    for (const auto& tell : rows) {
        changes = 0;
        tell();
        tell();
        EXPECT_EQ(changes, 1) << updater.message().toStdString();
    }
    EXPECT_TRUE(updater.sessionInProgress());
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

TEST_F(AppUpdaterTest, whatWaitsForACleanupHappensOnceAndDoesNotOutliveIt) {
    for (const bool ends : {false, true}) {
        auto waiting = std::make_unique<AppUpdater>(setup(&framework));
        bool cleaning = true;
        int takenOver = 0;
        const auto takeOver = [&] { ++takenOver; };
        waiting->installationIsSafe = [&] { return !cleaning; };
        waiting->start();
        EXPECT_TRUE(framework.handlers.shouldPostponeRelaunch(takeOver));
        EXPECT_TRUE(framework.handlers.shouldPostponeRelaunch(takeOver)) << "asked twice";
        cleaning = false;
        if (ends) waiting.reset();
        queue.advance(10);
        EXPECT_EQ(takenOver, ends ? 0 : 1);
    }
}

} // namespace
} // namespace varnet::test
