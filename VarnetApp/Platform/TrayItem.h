#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace varnet::platform {

/// One size of an icon.
struct TrayImage {
    int width = 0;  ///< pixels
    int height = 0; ///< pixels
    /// Row by row from the top, each 0xAARRGGBB, colours not multiplied by alpha; width × height of them.
    std::vector<std::uint32_t> pixels;

    bool operator==(const TrayImage&) const = default;
};

struct TrayMenuEntry {
    int id = 0;        ///< above zero and of this entry alone, separators included
    std::string label; ///< plain; not used by a separator
    bool enabled = true;
    bool separator = false;

    bool operator==(const TrayMenuEntry&) const = default;
};

/// The program's item in the desktop's tray. Main thread only; texts are UTF-8. It keeps what it is given and
/// shows it to every host that comes; what is set and is the same as before costs nothing.
class TrayItem {
public:
    struct Handlers {
        /// A click.
        /// @param x, y pixels on the screen, as the host says; some say 0, 0
        std::function<void(int x, int y)> activated;
        /// An entry that is there and enabled.
        std::function<void(int id)> menuChosen;
        /// With what the window that the next click opens may take the focus.
        std::function<void(const std::string& token)> activationToken;
        std::function<void(bool hosted)> hostedChanged;
    };

    virtual ~TrayItem() = default;

    /// Enters the tray, now and whenever one appears. Icon, title and menu are best set before.
    virtual void listen(Handlers handlers) = 0;

    /// Whether there is a tray that shows it. False until the tray has answered, which needs the event loop.
    virtual bool hosted() const = 0;

    /// @param images several sizes of one picture; those that are not what they say they are, or larger than
    ///        512 pixels, are left out
    virtual void setIcon(std::vector<TrayImage> images) = 0;
    virtual void setTitle(const std::string& title) = 0;
    virtual void setToolTip(const std::string& title, const std::string& text) = 0;
    /// Text beside the icon, where the host has room for it.
    /// @param guide the widest text to be expected, so that the icons beside it keep still
    virtual void setLabel(const std::string& text, const std::string& guide) = 0;
    /// What a screen reader says for the icon.
    virtual void setAccessibleDescription(const std::string& description) = 0;
    /// Entries without an id of their own are left out.
    virtual void setMenu(std::vector<TrayMenuEntry> entries) = 0;
};

/// That of this session. The application object must exist.
std::unique_ptr<TrayItem> makeTrayItem();

} // namespace varnet::platform
