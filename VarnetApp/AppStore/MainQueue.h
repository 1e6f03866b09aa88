#pragma once

#include "VarnetCore/Base/SerialQueue.h"

#include <QObject>

namespace varnet {

/// The main thread as a serial queue: its tasks run in the event loop. They are dropped when the queue ends.
class MainQueue final : public SerialQueue {
public:
    void postAfter(double seconds, Task task) override;

private:
    QObject context_; ///< lives on the main thread
};

} // namespace varnet
