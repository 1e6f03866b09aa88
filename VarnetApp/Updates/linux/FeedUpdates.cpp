#include "VarnetApp/Updates/linux/FeedUpdates.h"

#include "VarnetCore/Base/AtomicFile.h"

#include <QCryptographicHash>
#include <QNetworkReply>
#include <QSaveFile>
#include <QSettings>

#include <utility>

namespace varnet {

namespace {

constexpr const char* automaticKey = "SUEnableAutomaticChecks";
constexpr const char* lastCheckKey = "SULastCheckTime";

QNetworkRequest request(const QUrl& url) {
    QNetworkRequest request(url);
    // A host that may be told to look elsewhere is no host to trust.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setTransferTimeout(ReleaseFeed::timeout);
    request.setHeader(QNetworkRequest::UserAgentHeader, "Varnet");
    return request;
}

int statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

} // namespace

QUrl ReleaseHost::url(const QString& path) const {
    QUrl result = reroute.value_or(QUrl("https://" + QString::fromStdString(name)));
    result.setPath(path);
    return result;
}

void ReleaseFeed::read(QObject* receiver, std::function<void(Answer)> then) {
    QNetworkReply* const reply = network_.get(request(host_.url("/updates/latest.json")));
    reply->setParent(receiver);
    const auto tooLong = [reply] { return reply->bytesAvailable() > qint64{AppRelease::mostBytes}; };
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply, tooLong] {
        if (tooLong()) reply->abort();
    });
    QObject::connect(
        reply, &QNetworkReply::finished, receiver, [this, reply, tooLong, then = std::move(then)] {
            reply->deleteLater();
            const int status = statusOf(*reply);
            if (tooLong()) return then({std::nullopt, Trouble::tooLarge, "the answer is too long"});
            if (status >= 300 && status < 400)
                return then({std::nullopt, Trouble::redirect, "the server redirects"});
            if (reply->error() != QNetworkReply::NoError || status != 200)
                return then({std::nullopt, Trouble::network, reply->errorString()});
            const QByteArray data = reply->readAll();
            auto release =
                AppRelease::decode({data.constData(), static_cast<std::size_t>(data.size())}, host_.name);
            if (!release) return then({std::nullopt, Trouble::invalid, "the manifest is not valid"});
            then({std::move(*release), Trouble::none, {}});
        });
}

FeedUpdates::FeedUpdates(Setup setup) : setup_(std::move(setup)) {}

FeedUpdates::~FeedUpdates() = default;

std::optional<QString> FeedUpdates::start() {
    if (setup_.host.name.empty()) return QString("No release host is configured.");
    started_ = true;
    if (handlers_.stateChanged) handlers_.stateChanged();
    look();
    return std::nullopt;
}

bool FeedUpdates::automaticallyChecksForUpdates() const {
    return !setup_.defaults || setup_.defaults->value(automaticKey, true).toBool();
}

void FeedUpdates::setAutomaticallyChecksForUpdates(bool automatic) {
    if (setup_.defaults) setup_.defaults->setValue(automaticKey, automatic);
    if (handlers_.stateChanged) handlers_.stateChanged();
}

std::optional<Date> FeedUpdates::lastUpdateCheckDate() const {
    if (!setup_.defaults || !setup_.defaults->contains(lastCheckKey)) return std::nullopt;
    bool good = false;
    const double seconds = setup_.defaults->value(lastCheckKey).toDouble(&good);
    return good ? std::optional(Date{seconds}) : std::nullopt;
}

void FeedUpdates::look() {
    if (UpdateSchedule::isDue(automaticallyChecksForUpdates(), lastUpdateCheckDate(), setup_.clock.now()) &&
        !busy_)
        check(false);
    setup_.mainQueue.postAfter(lookInterval, [this, alive = std::weak_ptr(alive_)] {
        if (alive.lock()) look();
    });
}

void FeedUpdates::checkForUpdates() {
    if (!canCheckForUpdates()) return;
    if (found_) {
        download();
    } else {
        check(true);
    }
}

void FeedUpdates::check(bool asked) {
    setBusy(true);
    if (setup_.defaults) setup_.defaults->setValue(lastCheckKey, setup_.clock.now().seconds);
    feed_.read(this, [this, asked](const ReleaseFeed::Answer& answer) { judge(answer, asked); });
}

void FeedUpdates::judge(const ReleaseFeed::Answer& answer, bool asked) {
    setBusy(false);
    if (!answer.release) {
        // A check that nobody asked for fails in silence; the next one is a day away.
        if (asked && handlers_.didAbort) handlers_.didAbort();
        return;
    }
    if (answer.release->availability(setup_.build, setup_.systemVersion) == ReleaseAvailability::available) {
        found_ = answer.release;
        if (handlers_.didFindValidUpdate)
            handlers_.didFindValidUpdate(QString::fromStdString(found_->version));
    } else {
        found_.reset();
        if (handlers_.didNotFindUpdate) handlers_.didNotFindUpdate();
    }
}

void FeedUpdates::download() {
    if (AtomicFile::makePrivateFolder(setup_.folder)) return abort();
    setBusy(true);
    if (handlers_.willDownloadUpdate) handlers_.willDownloadUpdate(QString::fromStdString(found_->version));
    const QString path = QUrl(QString::fromStdString(found_->downloadURL)).path();
    QNetworkReply* const reply = network_.get(request(setup_.host.url(path)));
    reply->setParent(this);
    connect(reply, &QNetworkReply::downloadProgress, this, [reply](qint64 received, qint64) {
        if (received > mostBytes) reply->abort();
    });
    // Straight to the disk, under a name that only whole and checked archives get.
    auto* const file = new QSaveFile(
        QString::fromStdString((setup_.folder / path.section('/', -1).toStdString()).string()), reply);
    auto* const hash = new QCryptographicHash(QCryptographicHash::Sha256);
    connect(reply, &QObject::destroyed, [hash] { delete hash; });
    if (!file->open(QIODevice::WriteOnly)) {
        reply->abort();
        reply->deleteLater();
        return abort();
    }
    file->setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    const auto take = [reply, file, hash] {
        const QByteArray bytes = reply->readAll();
        hash->addData(bytes);
        if (file->write(bytes) != bytes.size()) reply->abort();
    };
    connect(reply, &QNetworkReply::readyRead, this, take);
    connect(reply, &QNetworkReply::finished, this, [this, reply, file, hash, take] {
        reply->deleteLater();
        if (reply->isOpen()) take();
        const bool whole = reply->error() == QNetworkReply::NoError && statusOf(*reply) == 200;
        if (!whole || hash->result().toHex() != QByteArray::fromStdString(found_->sha256)) {
            file->cancelWriting();
            file->commit();
            return abort();
        }
        const std::string archive = file->fileName().toStdString();
        if (!file->commit()) return abort();
        setBusy(false);
        if (handlers_.didExtractUpdate) handlers_.didExtractUpdate();
        const auto show = [this, archive] {
            if (setup_.reveal) setup_.reveal(archive);
        };
        if (!handlers_.shouldPostponeRelaunch || !handlers_.shouldPostponeRelaunch(show)) show();
    });
}

void FeedUpdates::abort() {
    setBusy(false);
    if (handlers_.didAbort) handlers_.didAbort();
}

void FeedUpdates::setBusy(bool busy) {
    if (std::exchange(busy_, busy) != busy && handlers_.stateChanged) handlers_.stateChanged();
}

} // namespace varnet
