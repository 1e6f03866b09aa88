#pragma once

#include "VarnetApp/Platform/SleepWatch.h"
#include "VarnetApp/Platform/linux/BusConnection.h"

#include <QObject>
#include <QString>

#include <memory>

namespace varnet::platform {

/// Sleep as the login manager announces it on the machine's bus.
class LoginManagerSleepWatch final : public QObject, public SleepWatch {
    Q_OBJECT

public:
    /// @param address of the machine's bus; empty: there is none
    explicit LoginManagerSleepWatch(const QString& address);
    ~LoginManagerSleepWatch() override;

    void listen(Handlers handlers) override;

private slots:
    void onPrepareForSleep(bool goingToSleep);

private:
    Handlers handlers_;
    std::unique_ptr<BusConnection> bus_;
};

} // namespace varnet::platform
