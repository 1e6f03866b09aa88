#pragma once

#include "tests/VarnetApp/Platform/EventLoop.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

namespace varnet::platform {

/// A message bus of the test's own.
class PrivateBus {
public:
    explicit PrivateBus(const TemporaryFolder& folder) : address_("unix:path=" + folder.path("bus")) {
        daemon_.start("dbus-daemon", {"--session", "--nofork", "--nopidfile", "--print-address",
                                      "--address=" + QString::fromStdString(address_)});
        running_ = daemon_.waitForStarted(10'000) && daemon_.waitForReadyRead(10'000);
    }
    ~PrivateBus() { stop(); }
    void stop() {
        daemon_.kill();
        daemon_.waitForFinished(10'000);
    }

    bool running() const { return running_; }
    QString address() const { return QString::fromStdString(address_); }

private:
    const std::string address_;
    QProcess daemon_;
    bool running_ = false;
};

/// A test with a bus of its own.
class BusTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(bus.running()); }

    QCoreApplication& loop = application(); // before whatever needs it
    TemporaryFolder folder;
    PrivateBus bus{folder};
};

/// A service on the bus, played by the test: it owns a name and one object, writes down what it is asked and
/// answers as told. What it was not told to answer is an unknown method.
class BusPeer : public QDBusVirtualObject {
public:
    using Answer = std::function<QDBusMessage(const QDBusMessage& call)>;

    BusPeer(const QString& address, const QString& name, const QString& path)
        : name_(name), path_(path), bus_(QDBusConnection::connectToBus(address, "peer " + name)) {
        bus_.registerVirtualObject(path, this);
    }
    ~BusPeer() override {
        bus_.unregisterObject(path_);
        QDBusConnection::disconnectFromBus("peer " + name_);
    }

    /// Last, when the answers stand.
    void appear() { bus_.registerService(name_); }
    void answer(const QString& member, Answer answer) { answers_[member] = std::move(answer); }
    void answer(const QString& member, const QVariantList& values) {
        answer(member, [values](const QDBusMessage& call) { return call.createReply(values); });
    }
    void emitSignal(const QString& interface, const QString& member, const QVariantList& arguments) {
        QDBusMessage signal = QDBusMessage::createSignal(path_, interface, member);
        signal.setArguments(arguments);
        bus_.send(signal);
    }
    /// What came under one name.
    QList<QDBusMessage> calls(const QString& member) const {
        QList<QDBusMessage> found;
        for (const QDBusMessage& call : calls_) {
            if (call.member() == member) found.append(call);
        }
        return found;
    }
    QDBusConnection& bus() { return bus_; }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        calls_.append(message);
        const auto found = answers_.find(message.member());
        return connection.send(found != answers_.end()
                                   ? found->second(message)
                                   : message.createErrorReply(QDBusError::UnknownMethod, message.member()));
    }

private:
    const QString name_;
    const QString path_;
    QDBusConnection bus_;
    std::map<QString, Answer> answers_;
    QList<QDBusMessage> calls_;
};

} // namespace varnet::platform
