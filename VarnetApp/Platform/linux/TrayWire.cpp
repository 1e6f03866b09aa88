#include "VarnetApp/Platform/linux/TrayWire.h"

#include <QDBusMetaType>
#include <QtEndian>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace varnet::platform {

namespace {

constexpr int largestSide = 512; // pixels: a tray has no use for more, and the bus carries every byte

bool isSound(const TrayImage& image) {
    return image.width > 0 && image.height > 0 && image.width <= largestSide && image.height <= largestSide &&
           image.pixels.size() ==
               static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
}

// A menu on the wire nests as deep as its sender likes; ours is flat.
constexpr int deepestMenu = 8;

void read(const QDBusArgument& argument, TrayMenuNode& node, int depth) {
    argument.beginStructure();
    argument >> node.id >> node.properties;
    argument.beginArray();
    node.children.clear();
    while (!argument.atEnd()) {
        QDBusVariant variant;
        argument >> variant;
        TrayMenuNode child;
        if (depth < deepestMenu && variant.variant().canConvert<QDBusArgument>()) {
            read(variant.variant().value<QDBusArgument>(), child, depth + 1);
            node.children.append(child);
        }
    }
    argument.endArray();
    argument.endStructure();
}

} // namespace

TrayPixmaps trayPixmaps(const std::vector<TrayImage>& images) {
    TrayPixmaps pixmaps;
    for (const TrayImage& image : images) {
        if (!isSound(image)) {
            continue;
        }
        TrayPixmap pixmap{
            image.width, image.height,
            QByteArray(static_cast<qsizetype>(image.pixels.size() * sizeof(std::uint32_t)), '\0')};
        qToBigEndian<std::uint32_t>(image.pixels.data(), static_cast<qsizetype>(image.pixels.size()),
                                    pixmap.bytes.data());
        pixmaps.append(std::move(pixmap));
    }
    return pixmaps;
}

// The bus library hands its argument through these, and nobody makes one on the way.
// NOLINTBEGIN(bugprone-return-const-ref-from-parameter)

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.icon << toolTip.pixmaps << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.icon >> toolTip.pixmaps >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuNode& node) {
    argument.beginStructure();
    argument << node.id << node.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const TrayMenuNode& child : node.children) {
        argument << QDBusVariant(QVariant::fromValue(child));
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuNode& node) {
    read(argument, node, 0);
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuProperties& properties) {
    argument.beginStructure();
    argument << properties.id << properties.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuProperties& properties) {
    argument.beginStructure();
    argument >> properties.id >> properties.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayMenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.event << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayMenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.event >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

// NOLINTEND(bugprone-return-const-ref-from-parameter)

void registerTrayTypes() {
    qDBusRegisterMetaType<TrayPixmap>();
    qDBusRegisterMetaType<TrayPixmaps>();
    qDBusRegisterMetaType<TrayToolTip>();
    qDBusRegisterMetaType<TrayMenuNode>();
    qDBusRegisterMetaType<TrayMenuProperties>();
    qDBusRegisterMetaType<QList<TrayMenuProperties>>();
    qDBusRegisterMetaType<TrayMenuEvent>();
    qDBusRegisterMetaType<QList<TrayMenuEvent>>();
    // Slots on the bus are known by the names of their types, as they are written there.
    qRegisterMetaType<QList<TrayMenuProperties>>("QList<varnet::platform::TrayMenuProperties>");
    qRegisterMetaType<QList<TrayMenuEvent>>("QList<varnet::platform::TrayMenuEvent>");
}

} // namespace varnet::platform
