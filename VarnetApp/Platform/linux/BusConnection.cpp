#include "VarnetApp/Platform/linux/BusConnection.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace varnet::platform {

namespace {

QString socketAddress(const QString& socket) {
    if (!QFileInfo::exists(socket)) {
        return {};
    }
    return QStringLiteral("unix:path=") +
           QString::fromLatin1(QFile::encodeName(socket).toPercentEncoding("/", "~"));
}

/// A name of its own for each: connections are looked up by name in the whole program.
QString newConnectionName() {
    static int count = 0;
    return QStringLiteral("varnet-%1").arg(++count);
}

} // namespace

QString sessionBusAddress() {
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) {
        return address.startsWith(QLatin1String("autolaunch:")) ? QString() : address;
    }
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return runtime.isEmpty() ? QString() : socketAddress(runtime + QStringLiteral("/bus"));
}

QString systemBusAddress() {
    const QString address = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
    return address.isEmpty() ? socketAddress(QStringLiteral("/run/dbus/system_bus_socket")) : address;
}

std::unique_ptr<BusConnection> BusConnection::open(const QString& address) {
    if (QCoreApplication::instance() == nullptr || address.isEmpty()) {
        return nullptr;
    }
    const QString name = newConnectionName();
    QDBusConnection connection = QDBusConnection::connectToBus(address, name);
    if (!connection.isConnected()) {
        QDBusConnection::disconnectFromBus(name);
        return nullptr;
    }
    return std::unique_ptr<BusConnection>(new BusConnection(std::move(connection)));
}

BusConnection::BusConnection(QDBusConnection connection) : connection_(std::move(connection)) {}

BusConnection::~BusConnection() {
    QDBusConnection::disconnectFromBus(connection_.name());
}

void BusConnection::call(const QDBusMessage& message, int timeout, QObject* receiver,
                         std::function<void(const QDBusMessage&)> answer) {
    auto* watcher = new QDBusPendingCallWatcher(connection_.asyncCall(message, timeout), receiver);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, receiver,
                     [watcher, answer = std::move(answer)] {
                         watcher->deleteLater();
                         answer(watcher->reply());
                     });
}

} // namespace varnet::platform
