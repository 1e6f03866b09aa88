#include "VarnetApp/Platform/Keychain.h"
#include "tests/VarnetApp/Platform/EventLoop.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QProcess>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>

namespace varnet {
namespace {

/// A session of the test's own: a bus that starts nothing by itself, and a real keyring's daemon on it. One a
/// process: libraries remember the session's bus.
class Session {
public:
    Session() {
        for (const char* const place : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
            qputenv(place, QByteArray::fromStdString(folder_.path().string()));
        const std::string address = "unix:path=" + folder_.path("bus");
        const std::string configuration = folder_.write(
            "bus.conf", "<busconfig><type>session</type><listen>" + address +
                            "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
                            "<allow eavesdrop=\"true\"/>"
                            "<allow own=\"*\"/></policy></busconfig>");
        bus_.start("dbus-daemon",
                   {"--nofork", "--print-address", "--config-file=" + QString::fromStdString(configuration)});
        bus_.waitForStarted();
        bus_.waitForReadyRead(10'000);
        qputenv("DBUS_SESSION_BUS_ADDRESS", QByteArray::fromStdString(address));
    }
    ~Session() {
        endKeyring();
        bus_.terminate();
        bus_.waitForFinished(5'000);
    }

    enum class Keyring { unlocked, locked };
    /// @return whether it is there
    bool startKeyring(Keyring how) {
        QStringList arguments{"--components=secrets", "--foreground",
                              "--control-directory=" + QString::fromStdString(folder_.path("control"))};
        if (how == Keyring::unlocked) arguments << "--unlock";
        keyring_ = std::make_unique<QProcess>();
        keyring_->start("gnome-keyring-daemon", arguments);
        keyring_->waitForStarted();
        if (how == Keyring::unlocked) keyring_->write("a password");
        keyring_->closeWriteChannel();
        return eventually([&] { return isServed() && isLocked() == (how == Keyring::locked); });
    }
    void endKeyring() {
        if (!keyring_) return;
        keyring_->terminate();
        keyring_->waitForFinished(5'000);
        keyring_.reset();
        eventually([&] { return !isServed(); });
    }

private:
    static bool isServed() {
        return QDBusConnection::sessionBus().interface()->isServiceRegistered("org.freedesktop.secrets");
    }

    static bool isLocked() {
        QDBusMessage look = QDBusMessage::createMethodCall("org.freedesktop.secrets",
                                                           "/org/freedesktop/secrets/aliases/default",
                                                           "org.freedesktop.DBus.Properties", "Get");
        look << "org.freedesktop.Secret.Collection" << "Locked";
        const QDBusReply<QDBusVariant> locked = QDBusConnection::sessionBus().call(look);
        return !locked.isValid() || locked.value().variant().toBool();
    }

    TemporaryFolder folder_;
    QProcess bus_;
    std::unique_ptr<QProcess> keyring_;
};

using Outcome = platform::Keychain::Outcome;

class KeychainTest : public testing::Test {
protected:
    static constexpr const char* service = "com.varnet.test.cloud.v1";

    platform::Keychain::Entry read(const char* account = "account") {
        const auto answer = std::make_shared<std::optional<platform::Keychain::Entry>>();
        keychain->read(service, account, &receiver, [answer](const auto& entry) { *answer = entry; });
        EXPECT_FALSE(*answer) << "never at once";
        EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
        return answer->value_or(platform::Keychain::Entry{});
    }
    bool ends(const std::function<void(std::function<void(bool)>)>& act) {
        const auto answer = std::make_shared<std::optional<bool>>();
        act([answer](bool done) { *answer = done; });
        EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
        return answer->value_or(false);
    }
    bool write(const std::string& data) {
        return ends([&](auto then) { keychain->write(service, "account", data, &receiver, then); });
    }
    bool remove() {
        return ends([&](auto then) { keychain->remove(service, "account", &receiver, then); });
    }

    QObject receiver;
    std::unique_ptr<platform::Keychain> keychain = platform::makeKeychain();
};

TEST_F(KeychainTest, keepsSecretsInTheSessionsKeyring) {
    EXPECT_EQ(read().outcome, Outcome::failed) << "no bus at all, and none is started";
    EXPECT_FALSE(write("lost"));
    EXPECT_FALSE(remove());

    Session session;
    EXPECT_EQ(read().outcome, Outcome::failed) << "nobody keeps secrets here";
    EXPECT_FALSE(write("lost"));

    ASSERT_TRUE(session.startKeyring(Session::Keyring::unlocked));
    EXPECT_EQ(read().outcome, Outcome::missing);
    EXPECT_TRUE(remove()) << "there was nothing";
    const std::string odd("{\"a\":\"\xc5\xa1\"}\n\0\xff", 14);
    EXPECT_TRUE(write("before"));
    EXPECT_TRUE(write(odd));
    EXPECT_EQ(read().data, odd);
    keychain = platform::makeKeychain();
    EXPECT_EQ(read().data, odd) << "another run of the program";
    EXPECT_EQ(read("another").outcome, Outcome::missing);
    EXPECT_TRUE(remove());
    EXPECT_EQ(read().outcome, Outcome::missing);
    EXPECT_TRUE(write("kept"));
    {
        QObject impatient;
        keychain->read(service, "account", &impatient, [](const auto&) { FAIL() << "nobody listens"; });
    }
    EXPECT_EQ(read().data, "kept");

    session.endKeyring();
    EXPECT_EQ(read().outcome, Outcome::failed) << "the keyring has gone";

    ASSERT_TRUE(session.startKeyring(Session::Keyring::locked));
    EXPECT_EQ(read().outcome, Outcome::failed) << "locked is not missing";
    EXPECT_EQ(read("another").outcome, Outcome::missing);
    session.endKeyring();
    ASSERT_TRUE(session.startKeyring(Session::Keyring::unlocked));
    // With another program's eyes: ours would speak on in a session that the daemon no longer knows.
    QProcess tool;
    tool.start("secret-tool", {"lookup", "server", service, "user", "account"});
    EXPECT_TRUE(eventually([&] { return tool.state() == QProcess::NotRunning; }));
    EXPECT_EQ(QByteArray::fromBase64(tool.readAllStandardOutput()), "kept") << "nothing has been lost";
}

} // namespace
} // namespace varnet

int main(int argc, char** argv) {
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qunsetenv("XDG_RUNTIME_DIR");
    const QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
