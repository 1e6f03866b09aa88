// A cycle of the backup, step by step, and the two transitions that it finishes when they were cut short.

#include "VarnetApp/CloudStore/CloudEnvelope.h"
#include "VarnetApp/CloudStore/CloudService.h"
#include "VarnetApp/CloudStore/CloudStore.h"
#include "VarnetApp/CloudStore/InstallationKey.h"
#include "VarnetApp/Platform/Keychain.h"
#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Base/JsonReading.h"
#include "VarnetCore/Cloud/CloudRecorder.h"

#include <QDateTime>

namespace varnet {

using JsonReading::Json;
using JsonReading::readKey;

namespace {

constexpr std::size_t mostDevices = 1'000;

std::optional<CloudDevice> deviceOf(const Json& json) {
    CloudDevice device;
    const bool whole = readKey(json, "id", device.id) && readKey(json, "name", device.name) &&
                       readKey(json, "platform", device.platform) && readKey(json, "mode", device.mode) &&
                       readKey(json, "archivedAt", device.archivedAt) &&
                       readKey(json, "lastBackupAt", device.lastBackupAt);
    return whole ? std::optional(device) : std::nullopt;
}

std::optional<Date> dateOf(const std::optional<std::string>& text) {
    const QDateTime date =
        QDateTime::fromString(QString::fromStdString(text.value_or("")), Qt::ISODateWithMs);
    if (!date.isValid()) return std::nullopt;
    return Date::fromUnix(static_cast<double>(date.toMSecsSinceEpoch()) / 1000);
}

} // namespace

void CloudStore::sync() {
    if (!setup_ || !configured() || !credentials_ || busy_) return;
    syncing_ = true;
    begin();
    nextAttempt_ = clock_.now() + period;
    if (credentials_->pendingDisconnect.value_or(false)) return sendDisconnect();
    if (credentials_->pendingMode) return sendPolicy([this] { askStatus(); });
    askStatus();
}

void CloudStore::endCycle() {
    retrySeconds_ = firstRetry;
    if (troubled_) say({});
    end();
}

// The user's choice.

void CloudStore::setMode(const QString& mode) {
    if (!setup_ || !configured() || !credentials_ || !CloudCredentials::isMode(mode.toStdString())) return;
    if (makesWay([this, mode] { setMode(mode); })) return;
    begin();
    CloudCredentials intended = *credentials_;
    intended.pendingMode = mode.toStdString();
    save(intended, [this] {
        sendPolicy([this] {
            // What there is will have been queued by then.
            nextAttempt_ = clock_.now() + firstRetry;
            end();
        });
    });
}

void CloudStore::sendPolicy(Then then) {
    const Json values{
        {"token", credentials_->token}, {"mode", *credentials_->pendingMode}, {"consent", consent}};
    ask("policy", values, [this, then = std::move(then)](const Answer& reply) {
        if (!reply && reply.error().code == CloudServiceError::archiveDeleted) return archiveGone();
        if (!reply) return fail(reply.error());
        CloudCredentials chosen = *credentials_;
        if (!readKey(*reply, "generation", chosen.generation)) return fail(CloudServiceError::noAnswer());
        chosen.mode = *std::exchange(chosen.pendingMode, std::nullopt);
        const auto conclude = [this, chosen, then] {
            save(chosen, [this, then] {
                say(credentials_->mode == "off"
                        ? QStringLiteral("Backup is off. Your cloud archive is kept.")
                        : QStringLiteral("Backup enabled. Available local history will be included."));
                then();
            });
        };
        if (chosen.mode != "off" && chosen.generation == credentials_->generation) return conclude();
        // Before it counts: if it ends in between, the next cycle does both again.
        discard(credentials_->scope(), [this, conclude](bool done) {
            if (!done) return fail(CloudServiceError::queue());
            conclude();
        });
    });
}

void CloudStore::disconnect() {
    if (!setup_ || !configured() || !credentials_) return;
    if (makesWay([this] { disconnect(); })) return;
    begin();
    CloudCredentials intended = *credentials_;
    intended.pendingDisconnect = true;
    save(intended, [this] { sendDisconnect(); });
}

void CloudStore::sendDisconnect() {
    ask("disconnect", {{"token", credentials_->token}}, [this](const Answer& reply) {
        if (!reply && !reply.error().isAnswer()) return fail(reply.error());
        // Whatever it says of it, the service knows. What cannot be discarded is never sent by anybody.
        discard(credentials_->scope(), [this](bool) { forgetAccount(); });
    });
}

/// Last comes what a restart would begin with.
void CloudStore::forgetAccount() {
    setup_->keychain.remove(keychainService, keychainAccount, this, [this](bool done) {
        if (!done) return fail(CloudServiceError::keychain());
        credentials_.reset();
        devices_.clear();
        lastBackup_.reset();
        retrySeconds_ = firstRetry;
        say(QStringLiteral("Disconnected. Local history and your cloud archive are kept."));
        end();
    });
}

// How things stand.

void CloudStore::askStatus() {
    ask("status", {{"token", credentials_->token}}, [this](const Answer& reply) {
        if (!reply && reply.error().code == CloudServiceError::archiveDeleted) return archiveGone();
        if (!reply) return fail(reply.error());
        takeStatus(*reply);
    });
}

void CloudStore::takeStatus(const Json& reply) {
    std::string mode;
    CloudCredentials current = *credentials_;
    const auto list = reply.find("devices");
    if (!readKey(reply, "mode", mode) || !readKey(reply, "generation", current.generation) ||
        list == reply.end() || !list->is_array())
        return fail(CloudServiceError::noAnswer());
    devices_.clear();
    for (const Json& json : *list) {
        const auto device = deviceOf(json);
        if (!device || devices_.size() == mostDevices) continue;
        devices_.push_back(*device);
        if (device->id != current.deviceID) continue;
        if (const auto date = dateOf(device->lastBackupAt)) lastBackup_ = date;
    }
    emit changed();
    if (mode == "off" && current.mode != "off") return archiveGone();
    if (current.generation == credentials_->generation) return drain();
    const std::string old = credentials_->scope();
    credentials_->generation = current.generation; // from here on news goes to the new archive
    discard(old, [this, current](bool done) {
        if (!done) return fail(CloudServiceError::queue());
        save(current, [this] { drain(); });
    });
}

/// The service has nothing to add to any more.
void CloudStore::archiveGone() {
    if (credentials_->mode == "off" && !credentials_->pendingMode) return endCycle();
    CloudCredentials stopped = *credentials_;
    stopped.mode = "off";
    stopped.pendingMode.reset();
    const std::string scope = stopped.scope();
    credentials_->pendingMode = "off"; // nothing more is queued from here on
    discard(scope, [this, stopped](bool done) {
        if (!done) return fail(CloudServiceError::queue());
        save(stopped, [this] {
            say(QStringLiteral(
                "This cloud archive was deleted. Enable backup again to start a new archive."));
            endCycle();
        });
    });
}

// Batch by batch.

void CloudStore::drain() {
    if (credentials_->mode == "off" || next_) return endCycle();
    struct Parcel {
        std::shared_ptr<const CloudBatch> batch; ///< null: the queue cannot be read
        std::string body;
    };
    const std::string scope = credentials_->scope();
    onRecorder(
        [recorder = setup_->recorder, key = key_, now = clock_.now(), credentials = *credentials_, scope] {
            auto batch = recorder->batch(scope);
            if (!batch) return Parcel{};
            Parcel parcel{std::make_shared<const CloudBatch>(std::move(*batch)), {}};
            if (parcel.batch->acknowledgements.empty()) return parcel;
            parcel.body = CloudEnvelope::seal(*key, "sync",
                                              {{"token", credentials.token},
                                               {"generation", credentials.generation},
                                               {"records", Json::parse(parcel.batch->data, nullptr, false)}},
                                              now);
            return parcel;
        },
        [this, scope](Parcel parcel) {
            if (!parcel.batch) return fail(CloudServiceError::queue());
            if (parcel.batch->acknowledgements.empty()) return endCycle();
            setup_->service.post("sync", std::move(parcel.body), this,
                                 [this, scope, batch = parcel.batch](const CloudReply<std::string>& reply) {
                                     const Answer answer = reply ? CloudService::objectOf(*reply)
                                                                 : std::unexpected(reply.error());
                                     if (answer) return acknowledge(batch, scope);
                                     if (answer.error().code == CloudServiceError::archiveDeleted)
                                         return archiveGone();
                                     fail(answer.error());
                                 });
        });
}

void CloudStore::acknowledge(std::shared_ptr<const CloudBatch> batch, const std::string& scope) {
    onRecorder([recorder = setup_->recorder, batch = std::move(batch),
                scope] { return recorder->ack(*batch, scope).has_value(); },
               [this](bool done) {
                   if (!done) return fail(CloudServiceError::queue());
                   lastBackup_ = clock_.now();
                   emit changed();
                   drain();
               });
}

} // namespace varnet
