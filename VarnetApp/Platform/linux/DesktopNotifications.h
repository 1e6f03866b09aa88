#pragma once

#include "VarnetApp/Platform/Notifications.h"
#include "VarnetApp/Platform/linux/BusConnection.h"

#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace varnet::platform {

/// Notifications through the desktop's notification daemon, which may come, go and be started by the bus.
class DesktopNotifications final : public QObject, public Notifications {
    Q_OBJECT

public:
    /// @param address of the session's bus; empty: there is none
    explicit DesktopNotifications(const QString& address);
    ~DesktopNotifications() override;

    void listen(Handlers handlers) override;
    void requestAuthorization(std::function<void(bool granted)> answer) override;
    void deliver(const std::string& key, const std::string& title, const std::string& body) override;

private slots:
    void onActivationToken(uint id, const QString& token);
    void onActionInvoked(uint id, const QString& action);
    void onNotificationClosed(uint id, uint reason);

private:
    struct Capabilities {
        bool markup = false;
        bool actions = false;
    };
    struct Text {
        std::string title;
        std::string body;
    };
    /// One key's place on the screen.
    struct Place {
        std::uint32_t id = 0;     ///< the daemon's; 0 until it has answered
        bool sending = false;     ///< an answer is on its way: what follows must replace what it names
        std::optional<Text> next; ///< what is still to be shown, the newest only
    };

    void askCapabilities(std::function<void(bool answered)> then);
    void pump(const std::string& key);
    void send(const std::string& key, const Text& text, std::uint32_t replaces);
    void onOwnerChanged(const QString& service, const QString& before, const QString& now);
    std::map<std::string, Place>::iterator placeOf(std::uint32_t id);

    Handlers handlers_;
    std::optional<Capabilities> capabilities_; ///< of the daemon that runs now
    bool asking_ = false;                      ///< for the sake of what is to be shown
    std::map<std::string, Place> places_;      ///< by key
    int daemon_ = 0;                           ///< counts daemons: numbers of one mean nothing to the next
    std::map<std::uint32_t, QString> tokens_;  ///< announced for a click that follows

    std::unique_ptr<BusConnection> bus_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
};

} // namespace varnet::platform
