#pragma once

#include "VarnetCore/Base/SerialQueue.h"

namespace varnet {

/// Runs each task as it is posted, on the poster's thread.
class InlineQueue final : public SerialQueue {
public:
    void postAfter(double, Task task) override { task(); }
};

} // namespace varnet
