#pragma once

#include "VarnetApp/Platform/Appearance.h"
#include "VarnetApp/Platform/linux/BusConnection.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>
#include <optional>

namespace varnet::platform {

/// The preferences that the desktop portal hands out. When the portal goes away they stay as they were last;
/// one that comes anew is asked anew.
class PortalAppearance final : public QObject, public Appearance {
    Q_OBJECT

public:
    /// @param address of the session's bus; empty: there is none
    explicit PortalAppearance(const QString& address);
    ~PortalAppearance() override;

    void listen(Handlers handlers) override;
    std::optional<bool> prefersDark() const override { return prefersDark_; }
    std::optional<bool> reducedMotion() const override { return reducedMotion_; }

private slots:
    void onSettingChanged(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void readAll();
    void read(const QString& method, const QString& space, const QString& key);
    void take(const QString& space, const QString& key, const QVariant& value);

    Handlers handlers_;
    std::optional<bool> prefersDark_;
    std::optional<bool> reducedMotion_;

    std::unique_ptr<BusConnection> bus_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
};

} // namespace varnet::platform
