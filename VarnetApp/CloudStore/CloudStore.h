#pragma once

// clang-format off: moc cannot read a file whose first header is what dates begin with.
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>
// clang-format on

#include "VarnetApp/CloudStore/CloudAccount.h"
#include "VarnetCore/Base/Date.h"

#include <QObject>
#include <QString>
#include <QUrl>

namespace varnet {

class Clock;
class CloudRecorder;
class CloudService;
class InstallationKey;
class SerialQueue;
struct FlameArchive;
struct FlameDay;
struct MonitorSnapshot;

namespace platform {
class Keychain;
}

/// The optional account: signs in through the browser, sends what is queued from time to time, and offers the
/// ways of backing up, disconnecting and restoring. Whatever fails is tried again later; monitoring never
/// waits for it and nothing local is touched by it. Main thread only.
class CloudStore : public QObject {
    Q_OBJECT
    /// This build knows a service. Without one nothing is ever tried.
    Q_PROPERTY(bool configured READ configured CONSTANT)
    Q_PROPERTY(bool signedIn READ signedIn NOTIFY changed)
    Q_PROPERTY(QString email READ email NOTIFY changed)
    /// "off", "private" or "community"; "off" also when nobody is signed in.
    Q_PROPERTY(QString mode READ mode NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)
    /// Something is under way that others wait for.
    Q_PROPERTY(bool busy READ busy NOTIFY changed)
    /// The browser has the sign-in; `cancelSignIn` gives it up.
    Q_PROPERTY(bool signingIn READ signingIn NOTIFY changed)

public:
    /// Seconds. The normal period of syncs, the first wait after a failure and the longest.
    static constexpr double period = 300;
    static constexpr double firstRetry = 30;
    static constexpr double longestRetry = 3600;
    /// Seconds between two questions whether the browser is done, and after which nobody waits any longer.
    static constexpr double pollInterval = 2;
    static constexpr double pollLimit = 600;
    /// The text that the user agrees to when backing up. Another text needs another name.
    static constexpr const char* consent = "2026-10-cloud-v1";

    /// What pictures and tests of views show instead of an account.
    struct Prepared {
        bool configured = true;
        std::optional<CloudCredentials> credentials;
        std::vector<CloudDevice> devices;
        std::optional<QString> message;
        std::optional<Date> lastBackup;
        bool busy = false;
        bool signingIn = false;
    };

    /// All outlive the store; what is queued on `recorderQueue` may outlive it.
    struct Setup {
        const Clock& clock;
        SerialQueue& mainQueue;
        SerialQueue& recorderQueue; ///< the recorder is touched there only
        CloudService& service;
        platform::Keychain& keychain;
        std::filesystem::path keyFile; ///< the installation's signing key; made when it is first needed
        std::shared_ptr<CloudRecorder> recorder;
        /// Takes over what a restore brought, keeping a copy of what was there.
        /// @return empty on success, else what went wrong
        std::function<std::optional<std::string>(FlameArchive)> restoreCollection = {};
    };

    explicit CloudStore(Setup setup);
    /// A store that shows and does nothing.
    CloudStore(const Clock& clock, Prepared prepared);
    ~CloudStore() override;

    /// Loads the credentials and begins the loop, once. Does nothing in a build without a service.
    void start();
    /// Queues what a published sample and the collection have of news, unless the last one is still at it.
    void observe(std::shared_ptr<const MonitorSnapshot> snapshot, const FlameArchive& collection);

    Q_INVOKABLE void sync();
    /// @param openURL shows a page in the user's browser; false: it could not
    void signIn(std::function<bool(const QUrl&)> openURL);
    Q_INVOKABLE void cancelSignIn();
    Q_INVOKABLE void setMode(const QString& mode);
    Q_INVOKABLE void disconnect();
    Q_INVOKABLE void restoreCollection();
    /// Shows the account's own page in the browser.
    void openAccount(std::function<bool(const QUrl&)> openURL);

    bool configured() const;
    bool signedIn() const { return credentials_.has_value(); }
    const std::optional<CloudCredentials>& credentials() const noexcept { return credentials_; }
    const std::vector<CloudDevice>& devices() const noexcept { return devices_; }
    QString email() const;
    QString mode() const;
    QString message() const { return message_.value_or(QString()); }
    bool busy() const { return busy_; }
    bool signingIn() const { return signingIn_; }
    const std::optional<Date>& lastBackup() const noexcept { return lastBackup_; }
    Date nextAttempt() const noexcept { return nextAttempt_; }
    double retrySeconds() const noexcept { return retrySeconds_; }

signals:
    void changed();

private:
    std::optional<CloudCredentials> credentials_;
    std::vector<CloudDevice> devices_;
    std::optional<QString> message_;
    bool busy_ = false;
    bool signingIn_ = false;
    std::optional<Date> lastBackup_;
    Date nextAttempt_ = Date::distantPast();
    double retrySeconds_ = firstRetry;
};

} // namespace varnet
