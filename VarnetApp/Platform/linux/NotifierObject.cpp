#include "VarnetApp/Platform/linux/NotifierObject.h"

#include <QDBusMessage>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace varnet::platform {

namespace {

const QString& interface() {
    static const QString name = QStringLiteral("org.kde.StatusNotifierItem");
    return name;
}

} // namespace

const QString& NotifierObject::path() {
    static const QString text = QStringLiteral("/StatusNotifierItem");
    return text;
}

NotifierObject::NotifierObject() {
    registerTrayTypes();
}

void NotifierObject::publish(QDBusConnection& bus) {
    bus_ = bus;
    bus_->registerObject(path(), this,
                         QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
}

void NotifierObject::tell(const QString& signal, const QVariantList& arguments) {
    if (bus_) {
        QDBusMessage message = QDBusMessage::createSignal(path(), interface(), signal);
        message.setArguments(arguments);
        bus_->send(message);
    }
}

void NotifierObject::setTitle(const QString& title) {
    if (std::exchange(title_, title) != title) {
        tell(QStringLiteral("NewTitle"));
    }
}

void NotifierObject::setIcon(TrayPixmaps icon) {
    if (icon_ != icon) {
        icon_ = std::move(icon);
        tell(QStringLiteral("NewIcon"));
    }
}

void NotifierObject::setToolTip(TrayToolTip toolTip) {
    if (toolTip_ != toolTip) {
        toolTip_ = std::move(toolTip);
        tell(QStringLiteral("NewToolTip"));
    }
}

void NotifierObject::setLabel(const QString& label, const QString& guide) {
    if (label_ != label || labelGuide_ != guide) {
        label_ = label;
        labelGuide_ = guide;
        tell(QStringLiteral("XAyatanaNewLabel"), {label, guide});
    }
}

void NotifierObject::setAccessibleDescription(const QString& description) {
    if (std::exchange(accessibleDescription_, description) == description || !bus_) {
        return;
    }
    // It has no signal of its own.
    QDBusMessage message = QDBusMessage::createSignal(
        path(), QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"));
    message.setArguments({interface(),
                          QVariantMap{{QStringLiteral("IconAccessibleDesc"), description},
                                      {QStringLiteral("AttentionAccessibleDesc"), description}},
                          QStringList()});
    bus_->send(message);
}

void NotifierObject::Activate(int x, int y) {
    emit activated(x, y);
}

void NotifierObject::SecondaryActivate(int x, int y) {
    emit activated(x, y);
}

void NotifierObject::ContextMenu(int x, int y) {
    emit activated(x, y);
}

void NotifierObject::Scroll(int, const QString&) {}

void NotifierObject::ProvideXdgActivationToken(const QString& token) {
    emit activationToken(token);
}

} // namespace varnet::platform
