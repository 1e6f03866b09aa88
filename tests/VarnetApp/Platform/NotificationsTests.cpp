#include "VarnetApp/Platform/linux/DesktopNotifications.h"
#include "tests/VarnetApp/Platform/PrivateBus.h"

#include <QDBusArgument>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace varnet::platform {
namespace {

const QString service = "org.freedesktop.Notifications";

/// A notification daemon that numbers what it shows.
struct Daemon : BusPeer {
    Daemon(const QString& address, const QStringList& capabilities)
        : BusPeer(address, service, "/org/freedesktop/Notifications") {
        answer("GetCapabilities", {capabilities});
        answer("Notify", [this](const QDBusMessage& call) {
            const uint replaced = call.arguments().at(1).toUInt();
            return call.createReply(replaced != 0 ? replaced : ++last);
        });
        appear();
    }
    QVariant notified(qsizetype nth, qsizetype argument) const {
        return calls("Notify").at(nth).arguments().at(argument);
    }
    bool eventuallyNotified(qsizetype times) const {
        return eventually([&] { return calls("Notify").size() == times; });
    }
    uint last = 6;
};

class NotificationsTest : public BusTest {
protected:
    static std::optional<bool> authorization(Notifications& notifications) {
        std::optional<bool> answer;
        notifications.requestAuthorization([&](bool granted) { answer = granted; });
        EXPECT_FALSE(answer) << "never from within the call";
        EXPECT_TRUE(eventually([&] { return answer.has_value(); }));
        return answer;
    }
};

TEST_F(NotificationsTest, somebodyMustBeThereToShowThem) {
    DesktopNotifications busless{QString()};
    EXPECT_EQ(authorization(busless), false);
    busless.deliver("key", "title", "body");

    DesktopNotifications notifications(bus.address());
    EXPECT_EQ(authorization(notifications), false);
    notifications.deliver("key", "title", "body");
    EXPECT_EQ(authorization(notifications), false);

    Daemon daemon(bus.address(), {"body"});
    EXPECT_EQ(authorization(notifications), true);
    EXPECT_EQ(daemon.calls("Notify").size(), 0) << "what nobody could show is not shown later";
}

TEST_F(NotificationsTest, noteIsSilentAndNamesItsProgram) {
    Daemon daemon(bus.address(), {"body", "actions"});
    DesktopNotifications notifications(bus.address());
    notifications.deliver("thermal", "Hot", "a < b");
    ASSERT_TRUE(daemon.eventuallyNotified(1));
    EXPECT_EQ(daemon.calls("Notify").at(0).signature(), "susssasa{sv}i");
    EXPECT_EQ(daemon.notified(0, 0), "Varnet");
    EXPECT_EQ(daemon.notified(0, 1), 0u);
    EXPECT_EQ(daemon.notified(0, 3), "Hot");
    EXPECT_EQ(daemon.notified(0, 4), "a < b") << "the daemon reads no markup";
    EXPECT_EQ(daemon.notified(0, 5).toStringList().value(0), "default");
    const auto hints = qdbus_cast<QVariantMap>(daemon.notified(0, 6));
    EXPECT_EQ(hints["desktop-entry"], "com.varnet.Varnet");
    EXPECT_EQ(hints["suppress-sound"], true);
}

TEST_F(NotificationsTest, sameKeyTakesThePlaceOfItsNote) {
    Daemon daemon(bus.address(), {"body"});
    DesktopNotifications notifications(bus.address());
    // Before the daemon has said anything: the first is overtaken.
    notifications.deliver("a", "1", "");
    notifications.deliver("a", "2", "");
    ASSERT_TRUE(daemon.eventuallyNotified(1));
    EXPECT_EQ(daemon.notified(0, 3), "2");
    notifications.deliver("a", "3", "");
    notifications.deliver("a", "4", "");
    notifications.deliver("b", "other", "");
    ASSERT_TRUE(eventually([&] {
        const auto calls = daemon.calls("Notify");
        return std::any_of(calls.begin(), calls.end(), [](const auto& call) {
            return call.arguments().at(3) == "4" && call.arguments().at(1) == 7u;
        });
    }));

    daemon.emitSignal(service, "NotificationClosed", {7u, 2u});
    daemon.emitSignal(service, "NotificationClosed", {99u, 2u});
    ASSERT_EQ(authorization(notifications), true) << "its answer comes behind the signals";
    const qsizetype before = daemon.calls("Notify").size();
    notifications.deliver("a", "5", "");
    ASSERT_TRUE(daemon.eventuallyNotified(before + 1));
    EXPECT_EQ(daemon.notified(before, 1), 0u) << "a number that is gone may be another program's by now";
}

TEST_F(NotificationsTest, clickOnOneOfOursOpens) {
    Daemon daemon(bus.address(), {"actions"});
    DesktopNotifications notifications(bus.address());
    std::vector<std::pair<std::string, std::string>> clicks;
    notifications.listen({.activated = [&](const std::string& key, const std::string& token) {
        clicks.emplace_back(key, token);
        notifications.deliver("from the handler", "", "");
    }});
    notifications.deliver("a", "1", "");
    ASSERT_TRUE(daemon.eventuallyNotified(1));
    ASSERT_EQ(authorization(notifications), true);
    daemon.emitSignal(service, "ActionInvoked", {3u, "default"}); // another program's
    daemon.emitSignal(service, "ActionInvoked", {7u, "settings"});
    daemon.emitSignal(service, "ActivationToken", {7u, "token"});
    daemon.emitSignal(service, "ActionInvoked", {7u, "default"});
    daemon.emitSignal(service, "ActionInvoked", {7u, "default"});
    ASSERT_TRUE(eventually([&] { return clicks.size() == 2; }));
    EXPECT_THAT(clicks, testing::ElementsAre(testing::Pair("a", "token"), testing::Pair("a", "")));
}

TEST_F(NotificationsTest, nextDaemonIsAskedAnewAndKnowsNoOldNumbers) {
    DesktopNotifications notifications(bus.address());
    {
        Daemon first(bus.address(), {"body"});
        notifications.deliver("a", "1", "");
        ASSERT_TRUE(first.eventuallyNotified(1));
        ASSERT_EQ(authorization(notifications), true);
    }
    ASSERT_EQ(authorization(notifications), false);
    Daemon second(bus.address(), {"body", "body-markup"});
    notifications.deliver("a", "<b> & co", "<b>make</b> & \"co\"");
    ASSERT_TRUE(second.eventuallyNotified(1));
    EXPECT_EQ(second.notified(0, 1), 0u);
    EXPECT_EQ(second.notified(0, 3), "<b> & co") << "titles are plain everywhere";
    EXPECT_EQ(second.notified(0, 4), "&lt;b&gt;make&lt;/b&gt; &amp; &quot;co&quot;") << "this one has markup";
    EXPECT_TRUE(second.notified(0, 5).toStringList().isEmpty()) << "it offers no actions";
}

} // namespace
} // namespace varnet::platform
