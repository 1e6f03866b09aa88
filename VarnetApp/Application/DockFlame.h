#pragma once

#include "VarnetCore/Flame/DockFlameState.h"

#include <QByteArray>
#include <QImage>
#include <QObject>

#include <functional>
#include <map>
#include <optional>

namespace varnet {

class StoreSettings;

/// The flame in the Dock, on the window and in the tray: follows the machine's state, slowly. Draws each
/// state at most once. Main thread only.
class DockFlame : public QObject {
    Q_OBJECT
    /// The icon shows the flame's face; else it is the application's own.
    Q_PROPERTY(bool dynamic READ dynamic WRITE setDynamic NOTIFY settingsChanged)
    /// The application stays in the Dock with no window open.
    Q_PROPERTY(bool keepInDock READ keepInDock WRITE setKeepInDock NOTIFY settingsChanged)

public:
    /// Whether the application has a place in the Dock.
    enum class Presence { accessory, regular };

    /// Pixels of a side of the images of a state.
    static constexpr int iconPixels = 512;

    /// @param settings outlives this
    explicit DockFlame(StoreSettings& settings, QObject* parent = nullptr);

    bool dynamic() const;
    void setDynamic(bool dynamic);
    bool keepInDock() const;
    void setKeepInDock(bool keep);

    DockFlameState state() const noexcept { return state_; }
    /// Takes a snapshot through the filter and shows what comes out.
    void update(const MonitorSnapshot& snapshot);

    /// Applies the state to the Dock.
    void render();
    /// Draws again even if the state is on show already: somebody else has changed the icon.
    void renderAnew();
    /// Works out the presence, then renders.
    void refreshPresence();
    Presence presence() const noexcept { return presence_; }
    /// An open window always has its place in the Dock.
    void setPresence(Presence presence) noexcept { presence_ = presence; }

    /// The face in the tray: the state's, or the calm one with a still icon.
    FlameExpression trayExpression() const;
    const std::optional<DockFlameState>& displayed() const noexcept { return displayed_; }
    std::size_t imagesHeld() const noexcept { return cache_.size(); }

    /// Whether a window that can be the main one is visible; supplied by the window layer.
    std::function<bool()> hasMainWindow;
    /// Puts an icon into the Dock; null: the application's own. Supplied by the window layer.
    std::function<void(const QImage&)> setApplicationIcon;

signals:
    void settingsChanged();
    /// The tray's face may have changed.
    void faceChanged();
    /// The presence has been worked out anew.
    void presenceChanged();

private:
    StoreSettings& settings_;
    DockFlameState state_ = DockFlameState::unknown;
    DockFlameStateMachine machine_;
    std::map<DockFlameState, QByteArray> cache_; ///< pixels, packed
    std::optional<DockFlameState> displayed_;    ///< empty: the application's own icon
    Presence presence_ = Presence::accessory;
};

} // namespace varnet
