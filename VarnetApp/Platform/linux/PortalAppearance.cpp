#include "VarnetApp/Platform/linux/PortalAppearance.h"

#include <QDBusError>
#include <QMetaType>

#include <utility>

namespace varnet::platform {

namespace {

// The first to ask may have the bus start the portal.
constexpr int answerTimeout = 25'000;

const QString& service() {
    static const QString name = QStringLiteral("org.freedesktop.portal.Desktop");
    return name;
}
const QString& path() {
    static const QString name = QStringLiteral("/org/freedesktop/portal/desktop");
    return name;
}
const QString& interface() {
    static const QString name = QStringLiteral("org.freedesktop.portal.Settings");
    return name;
}

struct Setting {
    QString space;
    QString key;
};
const Setting& colorScheme() {
    static const Setting setting{QStringLiteral("org.freedesktop.appearance"),
                                 QStringLiteral("color-scheme")};
    return setting;
}
const Setting& animations() {
    static const Setting setting{QStringLiteral("org.gnome.desktop.interface"),
                                 QStringLiteral("enable-animations")};
    return setting;
}

/// The older reading method wraps its answer twice.
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

PortalAppearance::PortalAppearance(const QString& address) : bus_(BusConnection::open(address)) {
    if (!bus_) {
        return;
    }
    // Slots are matched to signals by the names of their types, which are known only once registered.
    qRegisterMetaType<QDBusVariant>();
    (*bus_)->connect(service(), path(), interface(), QStringLiteral("SettingChanged"), this,
                     SLOT(onSettingChanged(QString, QString, QDBusVariant)));
    watcher_ =
        std::make_unique<QDBusServiceWatcher>(service(), **bus_, QDBusServiceWatcher::WatchForRegistration);
    QObject::connect(watcher_.get(), &QDBusServiceWatcher::serviceRegistered, this,
                     &PortalAppearance::readAll);
    readAll();
}

PortalAppearance::~PortalAppearance() = default;

void PortalAppearance::listen(Handlers handlers) {
    handlers_ = std::move(handlers);
}

void PortalAppearance::readAll() {
    for (const Setting& setting : {colorScheme(), animations()}) {
        read(QStringLiteral("ReadOne"), setting.space, setting.key);
    }
}

void PortalAppearance::read(const QString& method, const QString& space, const QString& key) {
    QDBusMessage call = QDBusMessage::createMethodCall(service(), path(), interface(), method);
    call.setArguments({space, key});
    bus_->call(call, answerTimeout, this, [this, method, space, key](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String("v")) {
            take(space, key, reply.arguments().constFirst());
        } else if (method == QLatin1String("ReadOne") &&
                   QDBusError(reply).type() == QDBusError::UnknownMethod) {
            read(QStringLiteral("Read"), space, key); // portals before their settings' version 2
        }
    });
}

void PortalAppearance::onSettingChanged(const QString& space, const QString& key, const QDBusVariant& value) {
    take(space, key, value.variant());
}

void PortalAppearance::take(const QString& space, const QString& key, const QVariant& wrapped) {
    const QVariant value = unwrapped(wrapped);
    const auto before = std::pair(prefersDark_, reducedMotion_);
    if (space == colorScheme().space && key == colorScheme().key) {
        const uint scheme = value.metaType() == QMetaType::fromType<uint>() ? value.toUInt() : 0;
        prefersDark_ = scheme == 1 || scheme == 2 ? std::optional(scheme == 1) : std::nullopt;
    } else if (space == animations().space && key == animations().key) {
        const bool known = value.metaType() == QMetaType::fromType<bool>();
        reducedMotion_ = known ? std::optional(!value.toBool()) : std::nullopt;
    }
    if (before != std::pair(prefersDark_, reducedMotion_) && handlers_.changed) {
        handlers_.changed();
    }
}

std::unique_ptr<Appearance> makeAppearance() {
    return std::make_unique<PortalAppearance>(sessionBusAddress());
}

} // namespace varnet::platform
