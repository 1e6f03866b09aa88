#pragma once

#include "VarnetApp/Platform/TrayItem.h"
#include "VarnetApp/Platform/linux/TrayWire.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusVariant>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>
#include <vector>

namespace varnet::platform {

/// The menu of the tray item, as the desktop's host reads it. The host draws it and tells what was chosen.
/// Entries keep their ids from one layout to the next, so that a click on a menu that has changed meanwhile
/// chooses what was seen, or nothing.
class TrayMenu final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

public:
    static const QString& path();

    TrayMenu();
    /// Shows the menu on a connection, which outlives it.
    void publish(QDBusConnection& bus);
    void set(std::vector<TrayMenuEntry> entries);

    uint version() const { return 3; }
    QString textDirection() const { return QStringLiteral("ltr"); }
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

public slots:
    uint GetLayout(int parent, int depth, const QStringList& names, varnet::platform::TrayMenuNode& layout);
    QList<varnet::platform::TrayMenuProperties> GetGroupProperties(const QList<int>& ids,
                                                                   const QStringList& names);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& event, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<varnet::platform::TrayMenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& unknown);

signals:
    void chosen(int id);

private:
    const TrayMenuEntry* entry(int id) const;
    std::optional<QVariantMap> properties(int id) const;
    void refuse(int id) const;

    std::vector<TrayMenuEntry> entries_;
    uint revision_ = 1;
    std::optional<QDBusConnection> bus_;
};

} // namespace varnet::platform
