#pragma once

#include "VarnetApp/Platform/linux/BusConnection.h"

#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

namespace varnet::platform {

/// Enters an item into the desktop's tray: at the watcher that keeps the list of items, when it is there and
/// whenever it comes again; and knows whether a host draws that list.
class TrayHost final : public QObject {
    Q_OBJECT

public:
    /// @param bus outlives this; its own name is what is entered
    explicit TrayHost(BusConnection& bus);

    bool hosted() const noexcept { return hosted_; }
    void enter();

signals:
    void hostedChanged(bool hosted);

private slots:
    void askForHost();

private:
    void onOwnerChanged(const QString& service, const QString& before, const QString& now);
    void setHosted(bool hosted);

    BusConnection& bus_;
    QDBusServiceWatcher watcher_;
    int registration_ = 0;    ///< counts watchers: an answer from one says nothing about the next
    bool registered_ = false; ///< the watcher of now has taken the item
    bool hosted_ = false;
};

} // namespace varnet::platform
