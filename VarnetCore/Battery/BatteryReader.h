#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Battery/BatteryReading.h"

namespace varnet {

/// Asks the machine about its battery. For one thread at a time.
class BatteryReader {
public:
    virtual ~BatteryReader() = default;

    /// Never waits for another program. A machine without a battery answers absent, one whose battery cannot
    /// be read unavailable.
    virtual BatteryReading read(Date at) = 0;
};

} // namespace varnet
