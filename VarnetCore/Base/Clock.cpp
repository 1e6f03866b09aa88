#include "VarnetCore/Base/Clock.h"

#include <chrono>

namespace varnet {

Date SystemClock::now() const {
    const std::chrono::duration<double> sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return Date::fromUnix(sinceEpoch.count());
}

} // namespace varnet
