#include "VarnetApp/Platform/linux/LoginManagerSleepWatch.h"
#include "tests/VarnetApp/Platform/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace varnet::platform {
namespace {

using SleepWatchTest = BusTest;

TEST_F(SleepWatchTest, everySleepAndWakingIsTold) {
    std::vector<bool> told;
    LoginManagerSleepWatch watch(bus.address());
    watch.listen({.changed = [&](bool goingToSleep) { told.push_back(goingToSleep); }});
    // A login manager that is restarted meanwhile goes on being heard.
    for (const bool goingToSleep : {true, false}) {
        BusPeer manager(bus.address(), "org.freedesktop.login1", "/org/freedesktop/login1");
        manager.appear();
        manager.emitSignal("org.freedesktop.login1.Manager", "PrepareForShutdown", {true});
        manager.emitSignal("org.freedesktop.login1.Manager", "PrepareForSleep", {goingToSleep});
        const std::size_t count = told.size();
        ASSERT_TRUE(eventually([&] { return told.size() > count; }));
    }
    EXPECT_THAT(told, testing::ElementsAre(true, false));
}

TEST_F(SleepWatchTest, machineWithoutABusIsSilent) {
    LoginManagerSleepWatch watch("unix:path=/nonexistent/varnet-test-bus");
    watch.listen({});
}

} // namespace
} // namespace varnet::platform
