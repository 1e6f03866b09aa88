// Signing in through the browser. It sends nothing of the history.

#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/CloudStore.h"
#include "VarnetApp/Platform/Keychain.h"
#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Base/JsonReading.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <openssl/rand.h>

#include <array>

namespace varnet {

using JsonReading::Json;
using JsonReading::readKey;

/// One way through the browser. Whoever holds its link alone has nothing: the verifier stays here until the
/// credentials are asked for.
struct CloudStore::Pairing {
    std::uint64_t attempt = 0;
    std::function<bool(const QUrl&)> openURL;
    std::string id;
    std::string verifier;
    Date deadline;
};

namespace {

/// Random bytes in base64; empty when there are none to be had.
std::string newVerifier() {
    std::array<unsigned char, 32> bytes{};
    if (RAND_bytes(bytes.data(), static_cast<int>(bytes.size())) != 1) return {};
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()))
        .toBase64()
        .toStdString();
}

std::string challengeOf(const std::string& verifier) {
    return QCryptographicHash::hash(QByteArray::fromStdString(verifier), QCryptographicHash::Sha256)
        .toBase64()
        .toStdString();
}

QString textOf(const CloudServiceError& error) {
    return QString::fromStdString(error.message);
}

QString noAnswer() {
    return textOf(CloudServiceError::noAnswer());
}

} // namespace

void CloudStore::signIn(const std::function<bool(const QUrl&)>& openURL) {
    if (!setup_ || !configured() || credentials_ || signingIn_ || !openURL) return;
    signingIn_ = true;
    say({});
    const std::uint64_t attempt = ++attempt_;
    // What could not be kept afterwards is not begun.
    setup_->keychain.read(keychainService, keychainAccount, this,
                          [this, attempt, openURL](const platform::Keychain::Entry& entry) {
                              if (attempt != attempt_) return;
                              if (entry.outcome == platform::Keychain::Outcome::failed)
                                  return endSignIn(textOf(CloudServiceError::keychain()));
                              pair(attempt, openURL);
                          });
}

void CloudStore::cancelSignIn() {
    if (setup_ && signingIn_) endSignIn({});
}

void CloudStore::endSignIn(const QString& text) {
    ++attempt_;
    signingIn_ = false;
    say(text);
}

void CloudStore::pair(std::uint64_t attempt, std::function<bool(const QUrl&)> openURL) {
    auto pairing = std::make_shared<Pairing>(Pairing{attempt, std::move(openURL), {}, newVerifier(), {}});
    if (pairing->verifier.empty()) return endSignIn(noAnswer());
    ask("pair", {{"challenge", challengeOf(pairing->verifier)}}, [this, pairing](const Answer& reply) {
        if (pairing->attempt != attempt_) return;
        if (!reply) return endSignIn(textOf(reply.error()));
        openBrowser(*reply, pairing);
    });
}

void CloudStore::openBrowser(const Json& reply, const std::shared_ptr<Pairing>& pairing) {
    std::string address;
    if (!readKey(reply, "pairingID", pairing->id) || !readKey(reply, "url", address))
        return endSignIn(noAnswer());
    const QUrl url(QString::fromStdString(address), QUrl::StrictMode);
    if (!setup_->service.isOwnPage(url) || !pairing->openURL(url)) return endSignIn(noAnswer());
    pairing->deadline = clock_.now() + pollLimit;
    say(QStringLiteral("Finish sign-in in your browser. Connecting does not upload history."));
    poll(pairing);
}

void CloudStore::poll(const std::shared_ptr<Pairing>& pairing) {
    setup_->mainQueue.postAfter(pollInterval, [this, alive = std::weak_ptr(alive_), pairing] {
        if (alive.expired() || pairing->attempt != attempt_) return;
        if (clock_.now() > pairing->deadline)
            return endSignIn(QStringLiteral("Sign-in expired. Please try again."));
        ask("exchange", {{"pairingID", pairing->id}, {"verifier", pairing->verifier}},
            [this, pairing](const Answer& reply) {
                if (pairing->attempt != attempt_) return;
                if (!reply) {
                    const CloudServiceError& error = reply.error();
                    // The user is in the browser meanwhile: a network that fails in passing ends nothing.
                    if (error.code == CloudServiceError::authorizationPending || !error.isAnswer())
                        return poll(pairing);
                    return endSignIn(textOf(error));
                }
                const auto credentials = CloudCredentials::parse(reply->dump());
                if (!credentials) return endSignIn(noAnswer());
                connectAccount(*credentials, pairing->attempt);
            });
    });
}

void CloudStore::connectAccount(const CloudCredentials& credentials, std::uint64_t attempt) {
    setup_->keychain.write(
        keychainService, keychainAccount, credentials.json(), this, [this, credentials, attempt](bool done) {
            if (attempt != attempt_) { // given up meanwhile
                setup_->keychain.remove(keychainService, keychainAccount, this, [](bool) {});
                return;
            }
            if (!done) return endSignIn(textOf(CloudServiceError::keychain()));
            credentials_ = credentials;
            devices_.clear();
            lastBackup_.reset();
            retrySeconds_ = firstRetry;
            nextAttempt_ = clock_.now();
            endSignIn(QStringLiteral("Connected. Choose how to back up your history."));
            arm();
        });
}

void CloudStore::openAccount(const std::function<bool(const QUrl&)>& openURL) {
    if (setup_ && configured() && openURL) openURL(setup_->service.accountPage());
}

} // namespace varnet
