#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace varnet::platform {

/// Where the session's bus listens; empty when it has none. Asking the bus library instead could start one.
QString sessionBusAddress();
/// Where the machine's bus listens; empty when it has none.
QString systemBusAddress();

/// A connection to a message bus for one service alone, closed with it. No bus is ever started. Main thread
/// only.
class BusConnection {
public:
    /// @return null when there is no application object, no address or nobody who answers there
    static std::unique_ptr<BusConnection> open(const QString& address);

    BusConnection(const BusConnection&) = delete;
    BusConnection& operator=(const BusConnection&) = delete;
    ~BusConnection();

    QDBusConnection& operator*() noexcept { return connection_; }
    QDBusConnection* operator->() noexcept { return &connection_; }

    /// Calls without waiting. The answer, which may be an error, arrives on the event loop, and never once
    /// the receiver is gone.
    /// @param timeout milliseconds after which the answer is an error
    void call(const QDBusMessage& message, int timeout, QObject* receiver,
              std::function<void(const QDBusMessage&)> answer);

private:
    explicit BusConnection(QDBusConnection connection);

    QDBusConnection connection_;
};

} // namespace varnet::platform
