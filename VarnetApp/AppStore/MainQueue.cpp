#include "VarnetApp/AppStore/MainQueue.h"

#include <QTimer>

#include <algorithm>
#include <cmath>

namespace varnet {

void MainQueue::postAfter(double seconds, Task task) {
    const auto wait = std::chrono::milliseconds(std::llround(std::max(seconds, 0.0) * 1000));
    QMetaObject::invokeMethod(
        &context_,
        [this, wait, task = std::move(task)] {
            if (wait.count() == 0) {
                task();
            } else {
                QTimer::singleShot(wait, &context_, task);
            }
        },
        Qt::QueuedConnection);
}

} // namespace varnet
