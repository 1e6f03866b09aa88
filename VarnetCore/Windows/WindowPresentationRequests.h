#pragma once

namespace varnet {

/// Decides when a request for the main window is served: once, as soon as the application has launched and
/// somebody can open windows, in whatever order these come. Each call tells whether a window is to open now.
struct WindowPresentationRequests {
    bool launched = false;
    bool actionReady = false; ///< a window can be opened
    bool pending = false;     ///< a request is waiting

    [[nodiscard]] bool finishedLaunching(bool showWindow) noexcept {
        launched = true;
        pending = pending || showWindow;
        return serve();
    }
    [[nodiscard]] bool registeredWindowAction() noexcept {
        actionReady = true;
        return serve();
    }
    [[nodiscard]] bool requestOpen() noexcept {
        pending = true;
        return serve();
    }

    friend bool operator==(const WindowPresentationRequests&, const WindowPresentationRequests&) = default;

private:
    bool serve() noexcept {
        const bool opens = launched && actionReady && pending;
        if (opens) pending = false;
        return opens;
    }
};

} // namespace varnet
