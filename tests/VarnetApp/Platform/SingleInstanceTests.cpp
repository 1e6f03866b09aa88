#include "VarnetApp/Platform/linux/BusNameInstance.h"
#include "tests/VarnetApp/Platform/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <optional>
#include <string>
#include <vector>

namespace varnet::platform {
namespace {

using Claim = SingleInstance::Claim;
using testing::ElementsAre;

class SingleInstanceTest : public BusTest {
protected:
    /// The second start's request, which waits for the first on this thread's event loop.
    bool requestedOpen(SingleInstance& second, const std::string& action = {}) {
        auto answer = std::async(std::launch::async, [&] {
            return action.empty() ? second.requestOpen() : second.requestAction(action);
        });
        EXPECT_TRUE(eventually(
            [&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
        return answer.get();
    }

    std::vector<std::string> tokens;
    SingleInstance::Handlers recording{
        .activated = [this](const std::string& token) { tokens.push_back(token); },
        .asked = [this](const std::string& action,
                        const std::string& token) { tokens.push_back(action + " with " + token); }};
};

TEST_F(SingleInstanceTest, laterStartsAskTheFirstForItsWindow) {
    std::optional<BusNameInstance> first(std::in_place, bus.address(), "");
    EXPECT_EQ(first->claim(), Claim::first);
    first->listen(recording);

    BusNameInstance second(bus.address(), "token 1");
    EXPECT_EQ(second.claim(), Claim::second);
    EXPECT_TRUE(requestedOpen(second));
    BusNameInstance third(bus.address(), "");
    EXPECT_EQ(third.claim(), Claim::second);
    EXPECT_TRUE(requestedOpen(third));
    EXPECT_TRUE(requestedOpen(second, "settings"));
    ASSERT_TRUE(eventually([&] { return tokens.size() == 3; }));
    EXPECT_THAT(tokens, ElementsAre("token 1", "", "settings with token 1"));

    first.reset();
    EXPECT_FALSE(requestedOpen(third)) << "nobody is started to answer";
    EXPECT_EQ(third.claim(), Claim::first) << "the name is free again, and nobody had queued for it";
}

TEST_F(SingleInstanceTest, launchersMayOpenFilesOrActions) {
    BusNameInstance first(bus.address(), "");
    ASSERT_EQ(first.claim(), Claim::first);
    first.listen(recording);
    BusPeer launcher(bus.address(), "test.launcher", "/launcher");
    const auto call = [&](const QString& member, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall("com.varnet.Varnet", "/com/varnet/Varnet",
                                                              "org.freedesktop.Application", member);
        message.setArguments(arguments);
        launcher.bus().send(message);
    };
    call("Open", {QStringList{"file:///x"}, QVariantMap{{"activation-token", "a"}}});
    call("ActivateAction", {"settings", QVariantList(), QVariantMap{{"desktop-startup-id", "b"}}});
    call("ActivateAction", {"", QVariantList(), QVariantMap{{"activation-token", "c"}}});
    call("Activate", {QVariantMap{{"activation-token", 5}}});
    call("Activate", {"no map"});
    call("deleteLater", {});
    call("Activate", {QVariantMap{{"activation-token", "last"}}});
    ASSERT_TRUE(eventually([&] { return !tokens.empty() && tokens.back() == "last"; }));
    EXPECT_THAT(tokens, ElementsAre("a", "settings with b", "c", "5", "last"));
}

TEST_F(SingleInstanceTest, withoutABusTheProgramSimplyStarts) {
    BusNameInstance busless{QString(), "token"};
    EXPECT_EQ(busless.claim(), Claim::noBus);
    EXPECT_FALSE(busless.requestOpen());
    BusNameInstance left(bus.address(), "");
    bus.stop();
    EXPECT_EQ(left.claim(), Claim::noBus);
}

} // namespace
} // namespace varnet::platform
