#pragma once

#include "VarnetApp/Updates/UpdateFramework.h"
#include "VarnetCore/Base/SerialQueue.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QSettings;

namespace varnet {

/// What the settings, the menu and the tray say of updates; and no update takes over while folders are being
/// moved. Main thread only.
class AppUpdater : public QObject {
    Q_OBJECT

public:
    struct Setup {
        QString version = "Development";
        QString build = "0";
        QSettings* defaults = nullptr;        ///< null: choices are not kept
        SerialQueue* mainQueue = nullptr;     ///< not null
        UpdateFramework* framework = nullptr; ///< null: a private copy, for which no updates are published
    };

    explicit AppUpdater(Setup setup, QObject* parent = nullptr);

    /// Begins, once.
    void start();
    /// The user asks for a look.
    void checkForUpdates();
    /// The user wants the version that was found.
    void openUpdate();

    const QString& version() const noexcept { return setup_.version; }
    const QString& build() const noexcept { return setup_.build; }
    /// Empty: none that is known of.
    const std::optional<QString>& availableVersion() const noexcept { return availableVersion_; }
    bool canCheckForUpdates() const noexcept { return canCheckForUpdates_; }
    bool sessionInProgress() const noexcept { return sessionInProgress_; }
    const std::optional<Date>& lastChecked() const noexcept { return lastChecked_; }
    const QString& message() const noexcept { return message_; }
    bool automaticEnabled() const noexcept { return automaticEnabled_; }
    void setAutomaticEnabled(bool automatic);

    /// Whether a new version may take over now.
    std::function<bool()> installationIsSafe = [] { return true; };

signals:
    void changed();
    /// The user has asked for something and will want to see what comes of it.
    void asked();

private:
    /// Seconds from one question whether it is safe to the next.
    static constexpr double patience = 2;

    void configure();
    void refreshState();
    void say(const QString& message);
    void say(const QString& message, std::optional<QString> available);
    bool postpone(std::function<void()> takeOver);
    void askAgain();

    const Setup setup_;
    std::optional<QString> availableVersion_;
    bool canCheckForUpdates_ = false;
    bool sessionInProgress_ = false;
    std::optional<Date> lastChecked_;
    QString message_ = "Updates install here. No dragging required.";
    bool automaticEnabled_ = true;
    bool configured_ = false;
    bool started_ = false;
    std::function<void()> takeOver_; ///< waits for a cleanup to end; empty: nothing does

    /// What posted work looks at before it touches the updater.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

} // namespace varnet
