#include "VarnetApp/Platform/linux/UserManagerEvents.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QFileInfo>

#include <utility>

namespace varnet::platform {

namespace {

const QString& managerService() {
    static const QString name = QStringLiteral("org.freedesktop.systemd1");
    return name;
}
const QString& managerPath() {
    static const QString path = QStringLiteral("/org/freedesktop/systemd1");
    return path;
}
const QString& managerInterface() {
    static const QString name = QStringLiteral("org.freedesktop.systemd1.Manager");
    return name;
}

/// A name of its own for each object: connections are looked up by name in the whole program.
QString newConnectionName() {
    static int count = 0;
    return QStringLiteral("varnet-unit-events-%1").arg(++count);
}

/// Where the session's bus listens; empty when it has none. Asking the bus library instead could start one.
QString sessionBusAddress() {
    const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) {
        return address.startsWith(QLatin1String("autolaunch:")) ? QString() : address;
    }
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const QString socket = runtime + QStringLiteral("/bus");
    if (runtime.isEmpty() || !QFileInfo::exists(socket)) {
        return {};
    }
    return QStringLiteral("unix:path=") +
           QString::fromLatin1(QFile::encodeName(socket).toPercentEncoding("/", "~"));
}

} // namespace

UserManagerEvents::UserManagerEvents(QString address)
    : address_(std::move(address)), connectionName_(newConnectionName()) {}

UserManagerEvents::~UserManagerEvents() {
    disconnect();
}

void UserManagerEvents::disconnect() {
    watcher_.reset();
    if (connection_) {
        connection_.reset();
        QDBusConnection::disconnectFromBus(connectionName_);
    }
}

void UserManagerEvents::listen(Handlers handlers) {
    handlers_ = std::move(handlers);
    if (QCoreApplication::instance() == nullptr || (connection_ && connection_->isConnected())) {
        return;
    }
    disconnect();
    const QString address = address_.isEmpty() ? sessionBusAddress() : address_;
    if (address.isEmpty()) {
        return;
    }
    connection_ = QDBusConnection::connectToBus(address, connectionName_);
    if (!connection_->isConnected()) {
        disconnect();
        return;
    }
    // Slots are matched to signals by the names of their types, which are known only once registered.
    qRegisterMetaType<QDBusObjectPath>();
    connection_->connect(managerService(), managerPath(), managerInterface(), QStringLiteral("JobRemoved"),
                         this, SLOT(onJobRemoved(uint, QDBusObjectPath, QString, QString)));
    connection_->connect(managerService(), managerPath(), managerInterface(), QStringLiteral("UnitRemoved"),
                         this, SLOT(onUnitRemoved(QString, QDBusObjectPath)));
    watcher_ = std::make_unique<QDBusServiceWatcher>(managerService(), *connection_,
                                                     QDBusServiceWatcher::WatchForRegistration);
    QObject::connect(watcher_.get(), &QDBusServiceWatcher::serviceRegistered, this,
                     &UserManagerEvents::subscribe);
    subscribe();
}

void UserManagerEvents::subscribe() {
    // The manager signals only while somebody has asked it to. Its answer changes nothing here.
    QDBusMessage call = QDBusMessage::createMethodCall(managerService(), managerPath(), managerInterface(),
                                                       QStringLiteral("Subscribe"));
    call.setAutoStartService(false);
    if (connection_) {
        connection_->send(call);
    }
}

void UserManagerEvents::onJobRemoved(uint, const QDBusObjectPath&, const QString& unit,
                                     const QString& result) {
    if (result == QLatin1String("done") && handlers_.settled) {
        handlers_.settled(unit.toStdString());
    }
}

void UserManagerEvents::onUnitRemoved(const QString& unit, const QDBusObjectPath&) {
    if (handlers_.removed) {
        handlers_.removed(unit.toStdString());
    }
}

} // namespace varnet::platform
