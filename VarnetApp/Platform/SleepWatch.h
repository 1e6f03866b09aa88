#pragma once

#include <functional>
#include <memory>

namespace varnet::platform {

/// Tells when the machine goes to sleep and when it has woken up. Main thread only.
class SleepWatch {
public:
    struct Handlers {
        /// @param goingToSleep false when it has woken up
        std::function<void(bool goingToSleep)> changed;
    };

    virtual ~SleepWatch() = default;

    /// Silent on a machine that has nobody to tell.
    virtual void listen(Handlers handlers) = 0;
};

/// That of this machine. The application object must exist.
std::unique_ptr<SleepWatch> makeSleepWatch();

} // namespace varnet::platform
