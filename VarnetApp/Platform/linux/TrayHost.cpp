#include "VarnetApp/Platform/linux/TrayHost.h"

#include <QDBusMessage>
#include <QDBusVariant>

#include <utility>

namespace varnet::platform {

namespace {

constexpr int answerTimeout = 25'000;

const QString& watcherName() {
    static const QString name = QStringLiteral("org.kde.StatusNotifierWatcher");
    return name;
}
const QString& watcherPath() {
    static const QString path = QStringLiteral("/StatusNotifierWatcher");
    return path;
}

QDBusMessage method(const QString& interface, const QString& name) {
    QDBusMessage call = QDBusMessage::createMethodCall(watcherName(), watcherPath(), interface, name);
    call.setAutoStartService(false); // a tray comes with its desktop, not with us
    return call;
}

} // namespace

TrayHost::TrayHost(BusConnection& bus)
    : bus_(bus), watcher_(watcherName(), *bus, QDBusServiceWatcher::WatchForOwnerChange) {
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus_->connect(watcherName(), watcherPath(), watcherName(), QString::fromLatin1(signal), this,
                      SLOT(askForHost()));
    }
    QObject::connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this, &TrayHost::onOwnerChanged);
}

void TrayHost::onOwnerChanged(const QString&, const QString&, const QString& now) {
    ++registration_;
    registered_ = false;
    setHosted(false);
    if (!now.isEmpty()) {
        enter();
    }
}

void TrayHost::enter() {
    QDBusMessage call = method(watcherName(), QStringLiteral("RegisterStatusNotifierItem"));
    call.setArguments({bus_->baseService()});
    bus_.call(call, answerTimeout, this, [this, mine = ++registration_](const QDBusMessage& reply) {
        if (mine == registration_ && reply.type() == QDBusMessage::ReplyMessage) {
            registered_ = true;
            askForHost();
        }
    });
}

void TrayHost::askForHost() {
    if (!registered_) {
        return; // asked once it is
    }
    QDBusMessage call = method(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setArguments({watcherName(), QStringLiteral("IsStatusNotifierHostRegistered")});
    bus_.call(call, answerTimeout, this, [this, mine = registration_](const QDBusMessage& reply) {
        if (mine == registration_) {
            setHosted(reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String("v") &&
                      reply.arguments().constFirst().value<QDBusVariant>().variant().toBool());
        }
    });
}

void TrayHost::setHosted(bool hosted) {
    if (std::exchange(hosted_, hosted) != hosted) {
        emit hostedChanged(hosted);
    }
}

} // namespace varnet::platform
