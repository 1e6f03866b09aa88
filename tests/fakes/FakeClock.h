#pragma once

#include "VarnetCore/Base/Clock.h"

namespace varnet {

/// A clock that stands still until it is advanced.
class FakeClock final : public Clock {
public:
    explicit FakeClock(Date start = {800'000'000}) : now_(start) {}

    Date now() const override { return now_; }
    void advance(double seconds) { now_ = now_ + seconds; }

private:
    Date now_;
};

} // namespace varnet
