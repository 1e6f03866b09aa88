#pragma once

#include <optional>
#include <string>

namespace varnet {

/// What started the program, in the four-letter codes of the desktop's launch events.
struct LaunchEvent {
    std::string eventID;                     ///< "oapp": the application was opened
    std::optional<std::string> propertyData; ///< "lgit": as a login item

    /// The event that the autostart entry's switch stands for.
    static LaunchEvent login() { return {"oapp", "lgit"}; }
};

/// Whether a start shows the main window: always, but for a silent start at login of a user who has finished
/// onboarding.
/// @param event empty: not known
/// @param forceWindow the window was asked for by name
[[nodiscard]] inline bool showsWindow(const std::optional<LaunchEvent>& event, bool hasOnboarded,
                                      bool forceWindow) {
    const bool silent = event && event->eventID == "oapp" && event->propertyData == "lgit";
    return !(hasOnboarded && !forceWindow && silent);
}

} // namespace varnet
