#pragma once

#include "VarnetCore/Windows/LaunchEvent.h"
#include "VarnetCore/Windows/WindowPresentationRequests.h"

#include <functional>
#include <optional>
#include <utility>

namespace varnet {

/// Opens the main window when it is asked for and can be opened. Main thread only.
class LaunchPresentation {
public:
    void finishedLaunching(const std::optional<LaunchEvent>& event, bool hasOnboarded, bool forceWindow) {
        serve(requests_.finishedLaunching(showsWindow(event, hasOnboarded, forceWindow)));
    }
    void registeredWindowAction(std::function<void()> openWindow) {
        openWindow_ = std::move(openWindow);
        serve(requests_.registeredWindowAction());
    }
    void requestOpen() { serve(requests_.requestOpen()); }

private:
    void serve(bool opens) const {
        if (opens && openWindow_) openWindow_();
    }

    WindowPresentationRequests requests_;
    std::function<void()> openWindow_;
};

} // namespace varnet
