#pragma once

#include <functional>
#include <memory>
#include <string>

namespace varnet::platform {

/// Silent notes to the user, outside of the program's windows. Main thread only; texts are UTF-8. Nothing
/// here waits: answers and clicks arrive on the event loop.
class Notifications {
public:
    struct Handlers {
        /// The user has clicked one that was delivered by this object.
        /// @param token lets a window take the focus where the desktop asks for one; else empty
        std::function<void(const std::string& key, const std::string& token)> activated;
    };

    virtual ~Notifications() = default;

    virtual void listen(Handlers handlers) = 0;

    /// @param answer called once, never from within this call: whether there is somebody to show them
    virtual void requestAuthorization(std::function<void(bool granted)> answer) = 0;

    /// Shows a note, in place of the one with the same key while that is on the screen. Without anybody to
    /// show it, it is dropped.
    /// @param title one line, plain
    /// @param body plain; it may hold any character
    virtual void deliver(const std::string& key, const std::string& title, const std::string& body) = 0;
};

/// Those of this session. The application object must exist.
std::unique_ptr<Notifications> makeNotifications();

} // namespace varnet::platform
