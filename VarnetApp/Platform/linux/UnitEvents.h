#pragma once

#include <functional>
#include <string>

namespace varnet::platform {

/// What the user's service manager reports about its units.
class UnitEvents {
public:
    struct Handlers {
        /// A job for a unit has been done: it has started, with its processes in it, or stopped.
        std::function<void(const std::string& unit)> settled;
        /// A unit is no more, and neither are its processes.
        std::function<void(const std::string& unit)> removed;
    };

    virtual ~UnitEvents() = default;

    /// Begins to report, on the calling thread's event loop. Safe to call again: a lost connection is made
    /// anew, a living one is left alone. Silent when there is nobody to listen to.
    virtual void listen(Handlers handlers) = 0;
};

} // namespace varnet::platform
