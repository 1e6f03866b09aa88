#include "VarnetApp/Platform/linux/LoginManagerSleepWatch.h"

#include <utility>

namespace varnet::platform {

LoginManagerSleepWatch::LoginManagerSleepWatch(const QString& address) : bus_(BusConnection::open(address)) {
    if (bus_) {
        (*bus_)->connect(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                         QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"),
                         this, SLOT(onPrepareForSleep(bool)));
    }
}

LoginManagerSleepWatch::~LoginManagerSleepWatch() = default;

void LoginManagerSleepWatch::listen(Handlers handlers) {
    handlers_ = std::move(handlers);
}

void LoginManagerSleepWatch::onPrepareForSleep(bool goingToSleep) {
    if (handlers_.changed) {
        handlers_.changed(goingToSleep);
    }
}

std::unique_ptr<SleepWatch> makeSleepWatch() {
    return std::make_unique<LoginManagerSleepWatch>(systemBusAddress());
}

} // namespace varnet::platform
