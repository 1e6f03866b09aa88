#pragma once

#include "VarnetCore/Base/Date.h"

namespace varnet {

/// Where the time comes from. Read once at the entry of a pass and handed down; tests advance a fake.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Date now() const = 0;
};

/// The machine's wall clock.
class SystemClock final : public Clock {
public:
    Date now() const override;
};

} // namespace varnet
