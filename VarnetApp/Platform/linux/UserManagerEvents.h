#pragma once

#include "VarnetApp/Platform/linux/BusConnection.h"
#include "VarnetApp/Platform/linux/UnitEvents.h"

#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <memory>

namespace varnet::platform {

/// The user manager's signals on the session bus, over a connection of its own. Main thread only.
class UserManagerEvents final : public QObject, public UnitEvents {
    Q_OBJECT

public:
    /// @param address of the bus; empty: the session's, and none where the session has none (no bus is ever
    ///        started)
    explicit UserManagerEvents(QString address);
    ~UserManagerEvents() override;

    void listen(Handlers handlers) override;

private slots:
    void onJobRemoved(uint job, const QDBusObjectPath& path, const QString& unit, const QString& result);
    void onUnitRemoved(const QString& unit, const QDBusObjectPath& path);
    void subscribe();

private:
    // Constant after construction.
    const QString address_;

    Handlers handlers_;
    std::unique_ptr<BusConnection> bus_;
    std::unique_ptr<QDBusServiceWatcher> watcher_; ///< a manager that starts anew knows no subscribers
};

} // namespace varnet::platform
