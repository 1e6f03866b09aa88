#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <functional>

namespace varnet {

/// For tests whose main brings none.
inline QCoreApplication& application() {
    static int count = 1;
    static char name[] = "test";
    static char* arguments[] = {name, nullptr};
    static QCoreApplication instance(count, arguments);
    return instance;
}

/// Turns the event loop until something holds. @return whether it did within twenty seconds
inline bool eventually(const std::function<bool()>& holds) {
    const QDeadlineTimer deadline(20'000);
    QTimer look; // at what changes without an event
    look.start(1);
    while (!holds()) {
        if (deadline.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace varnet
