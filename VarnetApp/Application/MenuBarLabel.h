#pragma once

#include "VarnetApp/Application/DockFlame.h"
#include "VarnetApp/Platform/TrayItem.h"

#include <QObject>
#include <QPoint>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace varnet {

class AppLocalization;
class VarnetStore;

/// The item in the tray: the flame's face, made small, with the machine's CPU beside it. Main thread only.
class MenuBarLabel : public QObject {
    Q_OBJECT

public:
    /// What the item's menu and a click on it do.
    struct Actions {
        std::function<void(std::optional<QPoint> at)> openPanel;
        std::function<void()> openMain;
        std::function<void()> openSettings;
        std::function<void()> checkForUpdates;
        std::function<void()> sendFeedback;
        std::function<void()> quit;
        std::function<void(const std::string& token)> activationToken;
        std::function<void(bool hosted)> hostedChanged;
    };

    /// @param item, store, flame, localization outlive this
    MenuBarLabel(platform::TrayItem& item, VarnetStore& store, DockFlame& flame,
                 AppLocalization& localization, Actions actions, QObject* parent = nullptr);

    /// Enters the tray.
    void show();

    /// Marks the icon when there is a version to update to.
    void setUpdateAvailable(bool available);
    /// Offers the user to look for one now.
    void setCanCheckForUpdates(bool possible);

    /// What a screen reader says: "Varnet? 3 findings", always in the plural.
    QString accessibleName() const;

private:
    void renderFace();
    void renderFigures();
    void renderMenu();
    const std::vector<platform::TrayImage>& imagesOf(FlameExpression expression);

    platform::TrayItem& item_;
    VarnetStore& store_;
    DockFlame& flame_;
    AppLocalization& localization_;
    const Actions actions_;
    bool updateAvailable_ = false;
    bool canCheckForUpdates_ = false;
    std::map<FlameExpression, std::vector<platform::TrayImage>> images_; ///< drawn once each
};

} // namespace varnet
