#pragma once

#include "VarnetApp/AppStore/NotificationRules.h"

#include <QSettings>
#include <QString>
#include <QStringList>

#include <memory>

namespace varnet {

/// The user's choices as the store keeps them. What cannot be read is its default. Main thread only.
class StoreSettings {
public:
    /// Project folders remembered at most; the oldest go first.
    static constexpr qsizetype maximumFolders = 100;

    /// @param defaults outlives this; null: choices live in memory and nothing is written
    explicit StoreSettings(QSettings* defaults) : defaults_(defaults) {}

    bool hasOnboarded() const { return flag("onboarded", false); }
    void setHasOnboarded(bool value) { set("onboarded", value); }

    /// "System", "Light" or "Dark".
    QString appearance() const;
    void setAppearance(const QString& value) { set("appearance", value); }

    bool showMenuCPU() const { return flag("menuCPU", true); }
    void setShowMenuCPU(bool value) { set("menuCPU", value); }

    bool notifications() const { return flag("notifications", false); }
    void setNotifications(bool value) { set("notifications", value); }

    bool dynamicDockFlame() const { return flag("dynamicDockFlame", true); }
    void setDynamicDockFlame(bool value) { set("dynamicDockFlame", value); }

    bool keepInDock() const { return flag("keepInDock", false); }
    void setKeepInDock(bool value) { set("keepInDock", value); }

    NotificationDates notificationDates() const;
    void setNotificationDates(const NotificationDates& dates);

    /// Absolute paths, oldest first.
    QStringList projectFolders() const;
    /// Keeps the newest ones. @return empty when they are safely written, else the reason
    QString setProjectFolders(QStringList folders);

    /// Takes away what an earlier version left.
    void removeLeftovers();

private:
    bool flag(const QString& key, bool fallback) const;
    QVariant value(const QString& key) const;
    void set(const QString& key, const QVariant& value);

    QSettings* const defaults_;
    QVariantMap memory_; ///< all choices when nothing is written
};

} // namespace varnet
