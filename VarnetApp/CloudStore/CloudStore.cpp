#include "VarnetApp/CloudStore/CloudStore.h"

#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/InstallationKey.h"
#include "VarnetApp/Platform/Keychain.h"
#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Cloud/CloudRecorder.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace varnet {

namespace {

QString textOf(const CloudServiceError& error) {
    return QString::fromStdString(error.message);
}

} // namespace

CloudStore::CloudStore(Setup setup) : clock_(setup.clock), setup_(std::move(setup)) {}

CloudStore::CloudStore(const Clock& clock, Prepared prepared)
    : clock_(clock), preparedConfigured_(prepared.configured), credentials_(std::move(prepared.credentials)),
      devices_(std::move(prepared.devices)), message_(std::move(prepared.message)), busy_(prepared.busy),
      signingIn_(prepared.signingIn), lastBackup_(prepared.lastBackup) {}

CloudStore::~CloudStore() = default;

bool CloudStore::configured() const {
    return setup_ ? setup_->service.isConfigured() : preparedConfigured_;
}

QString CloudStore::email() const {
    return credentials_ ? QString::fromStdString(credentials_->email) : QString();
}

QString CloudStore::mode() const {
    return QString::fromStdString(credentials_ ? credentials_->mode : "off");
}

// The loop.

void CloudStore::start() {
    if (!setup_ || !configured() || std::exchange(started_, true)) return;
    setup_->keychain.read(
        keychainService, keychainAccount, this, [this](const platform::Keychain::Entry& entry) {
            using Outcome = platform::Keychain::Outcome;
            if (entry.outcome == Outcome::missing || credentials_) return;
            credentials_ =
                entry.outcome == Outcome::done ? CloudCredentials::parse(entry.data) : std::nullopt;
            if (!credentials_) return say(textOf(CloudServiceError::keychain()));
            emit changed();
            look();
        });
}

/// Looks again when the next attempt is due. Without an account there is nothing to look for.
void CloudStore::arm() {
    if (!started_ || !credentials_) return;
    const double wait = std::clamp(nextAttempt_ - clock_.now(), loopPeriod, longestRetry);
    setup_->mainQueue.postAfter(wait, [this, alive = std::weak_ptr(alive_), turn = ++turn_] {
        if (!alive.expired() && turn == turn_) look();
    });
}

void CloudStore::look() {
    const double ahead = nextAttempt_ - clock_.now();
    // Further ahead than any wait: the clock was set back.
    if (ahead <= 0 || ahead > longestRetry) sync();
    if (!busy_) arm();
}

// What is queued.

void CloudStore::observe(std::shared_ptr<const MonitorSnapshot> snapshot, const FlameArchive& collection) {
    if (!setup_ || !configured() || !credentials_ || !credentials_->backsUp() || capturing_) return;
    capturing_ = true;
    onRecorder(
        [recorder = setup_->recorder, snapshot = std::move(snapshot), collection,
         scope = credentials_->scope()] {
            return recorder->capture(*snapshot, collection, scope).has_value();
        },
        [this](bool queued) {
            capturing_ = false;
            const QString notQueued = textOf(CloudServiceError::queue());
            if (!queued) return say(notQueued);
            if (message_ == notQueued) say({});
        });
}

void CloudStore::sendFeedback(const Feedback& feedback, QObject* receiver,
                              std::function<void(bool accepted)> then) {
    if (setup_) setup_->service.send(feedback, receiver, std::move(then));
}

// One thing at a time.

bool CloudStore::makesWay(Then action) {
    if (busy_ && syncing_) next_ = std::move(action);
    return busy_;
}

void CloudStore::begin() {
    busy_ = true;
    emit changed();
}

void CloudStore::end() {
    busy_ = false;
    syncing_ = false;
    emit changed();
    if (const Then action = std::exchange(next_, {})) action();
    if (!busy_) arm();
}

void CloudStore::say(const QString& text) {
    troubled_ = false;
    message_ = text.isEmpty() ? std::nullopt : std::optional(text);
    emit changed();
}

void CloudStore::fail(const CloudServiceError& error) {
    if (error.code == CloudServiceError::invalidToken) return rejectToken(error);
    // A network that fails in passing is nobody's business; what the user has asked for is.
    if (!syncing_ || error.isAnswer()) {
        say(textOf(error));
        troubled_ = syncing_;
    }
    if (syncing_) {
        nextAttempt_ = clock_.now() + retrySeconds_;
        retrySeconds_ = std::min(retrySeconds_ * 2, longestRetry);
    }
    end();
}

/// Asks for a new sign-in. What is queued waits for it.
void CloudStore::rejectToken(const CloudServiceError& error) {
    setup_->keychain.remove(keychainService, keychainAccount, this, [this, error](bool) {
        // A token that stays in the keychain is rejected again at the next start.
        credentials_.reset();
        devices_.clear();
        say(textOf(error));
        end();
    });
}

// What it stands on.

void CloudStore::withKey(std::function<void(std::shared_ptr<const InstallationKey>)> then) {
    if (key_) return then(key_);
    onRecorder([file = setup_->keyFile] { return InstallationKey::open(file); },
               [this, then = std::move(then)](std::optional<InstallationKey> key) {
                   if (key) key_ = std::make_shared<const InstallationKey>(std::move(*key));
                   then(key_);
               });
}

void CloudStore::ask(const std::string& operation, nlohmann::json values, std::function<void(Answer)> then) {
    withKey([this, operation, values = std::move(values),
             then = std::move(then)](const std::shared_ptr<const InstallationKey>& key) {
        if (!key) return then(std::unexpected(CloudServiceError::noAnswer()));
        setup_->service.request(*key, operation, values, this, then);
    });
}

void CloudStore::save(CloudCredentials credentials, Then then) {
    std::string json = credentials.json();
    setup_->keychain.write(keychainService, keychainAccount, std::move(json), this,
                           [this, credentials = std::move(credentials), then = std::move(then)](bool done) {
                               if (!done) return fail(CloudServiceError::keychain());
                               credentials_ = credentials;
                               emit changed();
                               then();
                           });
}

void CloudStore::discard(const std::string& scope, std::function<void(bool)> then) {
    onRecorder([recorder = setup_->recorder, scope] { return recorder->discard(scope).has_value(); },
               std::move(then));
}

} // namespace varnet
