#include "VarnetApp/Platform/linux/UserManagerEvents.h"

#include <QDBusMessage>

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

} // namespace

UserManagerEvents::UserManagerEvents(QString address) : address_(std::move(address)) {}

UserManagerEvents::~UserManagerEvents() = default;

void UserManagerEvents::listen(Handlers handlers) {
    handlers_ = std::move(handlers);
    if (bus_ && (*bus_)->isConnected()) {
        return;
    }
    watcher_.reset();
    bus_ = BusConnection::open(address_.isEmpty() ? sessionBusAddress() : address_);
    if (!bus_) {
        return;
    }
    // Slots are matched to signals by the names of their types, which are known only once registered.
    qRegisterMetaType<QDBusObjectPath>();
    (*bus_)->connect(managerService(), managerPath(), managerInterface(), QStringLiteral("JobRemoved"), this,
                     SLOT(onJobRemoved(uint, QDBusObjectPath, QString, QString)));
    (*bus_)->connect(managerService(), managerPath(), managerInterface(), QStringLiteral("UnitRemoved"), this,
                     SLOT(onUnitRemoved(QString, QDBusObjectPath)));
    watcher_ = std::make_unique<QDBusServiceWatcher>(managerService(), **bus_,
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
    if (bus_) {
        (*bus_)->send(call);
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
