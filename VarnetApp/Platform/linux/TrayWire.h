#pragma once

#include "VarnetApp/Platform/TrayItem.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariantMap>

#include <vector>

/// What tray items and their menus are made of on the bus.
namespace varnet::platform {

struct TrayPixmap { // (iiay)
    int width = 0;
    int height = 0;
    QByteArray bytes; ///< ARGB32, most significant byte first

    bool operator==(const TrayPixmap&) const = default;
};
using TrayPixmaps = QList<TrayPixmap>;

struct TrayToolTip { // (sa(iiay)ss)
    QString icon;
    TrayPixmaps pixmaps;
    QString title;
    QString text; ///< with markup

    bool operator==(const TrayToolTip&) const = default;
};

struct TrayMenuNode { // (ia{sv}av)
    int id = 0;
    QVariantMap properties;
    QList<TrayMenuNode> children;
};

struct TrayMenuProperties { // (ia{sv})
    int id = 0;
    QVariantMap properties;
};

struct TrayMenuEvent { // (isvu)
    int id = 0;
    QString event;
    QDBusVariant data;
    uint timestamp = 0;
};

/// Those of the images that are what they say they are.
TrayPixmaps trayPixmaps(const std::vector<TrayImage>& images);

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuNode& node);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuNode& node);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuProperties& properties);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuProperties& properties);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuEvent& event);

/// To be called before any of them crosses the bus.
void registerTrayTypes();

} // namespace varnet::platform
