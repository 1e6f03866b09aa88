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
#include "VarnetCore/Base/SerialQueue.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <expected>
#include <utility>

namespace varnet {

class Clock;
class CloudRecorder;
class CloudService;
class InstallationKey;
class RestorePages;
struct CloudBatch;
struct Feedback;
struct FlameArchive;
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
    /// Seconds between two looks of the loop, at least.
    static constexpr double loopPeriod = 30;
    /// Seconds between two questions whether the browser is done, and after which nobody waits any longer.
    static constexpr double pollInterval = 2;
    static constexpr double pollLimit = 600;
    /// Where the credentials lie in the keychain.
    static constexpr const char* keychainService = "com.varnet.app.cloud.v1";
    static constexpr const char* keychainAccount = "account";
    /// The text that the user agrees to when backing up. Another text needs another name.
    static constexpr const char* consent = "2026-10-cloud-v1";

    /// What pictures and tests of views show instead of an account.
    struct Prepared {
        bool configured = true;
        std::optional<CloudCredentials> credentials = {};
        std::vector<CloudDevice> devices = {};
        std::optional<QString> message = {};
        std::optional<Date> lastBackup = {};
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
    void signIn(const std::function<bool(const QUrl&)>& openURL);
    Q_INVOKABLE void cancelSignIn();
    Q_INVOKABLE void setMode(const QString& mode);
    Q_INVOKABLE void disconnect();
    Q_INVOKABLE void restoreCollection();
    /// Shows the account's own page in the browser.
    void openAccount(const std::function<bool(const QUrl&)>& openURL);
    /// For which no account is needed.
    /// @param receiver ends the question with itself
    void sendFeedback(const Feedback& feedback, QObject* receiver, std::function<void(bool accepted)> then);

    bool configured() const;
    bool signedIn() const { return credentials_.has_value(); }
    const std::optional<CloudCredentials>& credentials() const noexcept { return credentials_; }
    const std::vector<CloudDevice>& devices() const noexcept { return devices_; }
    QString email() const;
    QString mode() const;
    QString message() const { return message_.value_or(QString()); }
    /// The user has read it.
    void dismissMessage() { say({}); }
    bool busy() const { return busy_; }
    bool signingIn() const { return signingIn_; }
    const std::optional<Date>& lastBackup() const noexcept { return lastBackup_; }
    Date nextAttempt() const noexcept { return nextAttempt_; }
    double retrySeconds() const noexcept { return retrySeconds_; }

signals:
    void changed();

private:
    using Then = std::function<void()>;
    using Answer = std::expected<nlohmann::json, CloudServiceError>;
    struct Pairing;

    // What all have in common (CloudStore.cpp).
    void arm();
    void look();
    /// @return whether the caller is to leave it at that: something else runs. A sync makes room for what the
    /// user asks, which then runs.
    bool makesWay(Then action);
    void begin();
    void end();
    void say(const QString& text);
    void fail(const CloudServiceError& error);
    void rejectToken(const CloudServiceError& error);
    void ask(const std::string& operation, nlohmann::json values, std::function<void(Answer)> then);
    void withKey(std::function<void(std::shared_ptr<const InstallationKey>)> then);
    /// Keeps the credentials before they count. What cannot be kept is told, and the action ends.
    void save(CloudCredentials credentials, Then then);
    void discard(const std::string& scope, std::function<void(bool done)> then);
    /// Runs work off the main thread and then hands its result to the main thread, if the store still lives.
    template <typename Work, typename Use>
    void onRecorder(Work work, Use use);

    // Signing in (CloudSignIn.cpp).
    void pair(std::uint64_t attempt, std::function<bool(const QUrl&)> openURL);
    void openBrowser(const nlohmann::json& reply, const std::shared_ptr<Pairing>& pairing);
    void poll(const std::shared_ptr<Pairing>& pairing);
    void connectAccount(const CloudCredentials& credentials, std::uint64_t attempt);
    void endSignIn(const QString& text);

    // A cycle and what it shares with the user's actions (CloudSync.cpp).
    void sendDisconnect();
    void forgetAccount();
    void sendPolicy(Then then);
    void askStatus();
    void takeStatus(const nlohmann::json& reply);
    void archiveGone();
    void drain();
    void acknowledge(std::shared_ptr<const CloudBatch> batch, const std::string& scope);
    void endCycle();

    // Restoring (CloudRestoring.cpp).
    void askPage(const std::shared_ptr<RestorePages>& pages, const std::string& cursor);
    void takeCollection(std::optional<FlameArchive> archive);

    // Constant after construction.
    const Clock& clock_;
    const std::optional<Setup> setup_; ///< empty: prepared
    const bool preparedConfigured_ = false;

    // Main thread.
    std::shared_ptr<const InstallationKey> key_; ///< null before it is first needed
    std::optional<CloudCredentials> credentials_;
    std::vector<CloudDevice> devices_;
    std::optional<QString> message_;
    bool troubled_ = false; ///< the message is of a cycle's trouble, which may pass
    bool busy_ = false;
    bool syncing_ = false; ///< what is under way is a cycle
    Then next_;            ///< what the user asked for meanwhile
    bool signingIn_ = false;
    std::uint64_t attempt_ = 0; ///< tells one sign-in from the next
    bool capturing_ = false;
    bool started_ = false;
    std::uint64_t turn_ = 0; ///< tells the loop's timer from those it had before
    std::optional<Date> lastBackup_;
    Date nextAttempt_ = Date::distantPast();
    double retrySeconds_ = firstRetry;

    /// What posted work looks at before it touches the store.
    std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

template <typename Work, typename Use>
void CloudStore::onRecorder(Work work, Use use) {
    setup_->recorderQueue.post([&mainQueue = setup_->mainQueue, alive = std::weak_ptr(alive_),
                                work = std::move(work), use = std::move(use)]() mutable {
        auto result = std::make_shared<decltype(work())>(work());
        mainQueue.post([alive, result, use = std::move(use)]() mutable {
            if (!alive.expired()) use(std::move(*result));
        });
    });
}

} // namespace varnet
