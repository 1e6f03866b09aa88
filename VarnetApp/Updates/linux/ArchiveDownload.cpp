#include "VarnetApp/Updates/linux/ArchiveDownload.h"

#include "VarnetCore/Base/AtomicFile.h"

#include <QCryptographicHash>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSaveFile>
#include <QTimer>

#include <chrono>
#include <system_error>
#include <utility>

namespace varnet::ArchiveDownload {

namespace {

/// The whole of a download: far more than a slow line needs, but a server that drips ends some day.
constexpr std::chrono::hours longest{6};

/// Takes away what downloads of earlier left, whole or cut off.
void sweep(const std::filesystem::path& folder) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().filename().string().starts_with("Varnet-"))
            std::filesystem::remove(entry->path(), ignored);
    }
}

/// An archive on its way to the disk; its temporary file goes with it.
class Fetch : public QObject {
public:
    Fetch(QNetworkReply& reply, const std::filesystem::path& file)
        : QObject(&reply), reply_(reply), file_(QString::fromStdString(file.string())) {}

    bool open() {
        if (!file_.open(QIODevice::WriteOnly)) return false;
        return file_.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    }

    /// Whoever says beforehand that it is too much need not send it.
    void judgeLength() {
        if (reply_.header(QNetworkRequest::ContentLengthHeader).toLongLong() > mostBytes) reply_.abort();
    }

    void take() {
        const QByteArray bytes = reply_.readAll();
        received_ += bytes.size();
        hash_.addData(bytes);
        failed_ = failed_ || received_ > mostBytes || file_.write(bytes) != bytes.size();
        if (failed_) reply_.abort();
    }

    Outcome finish(const std::string& digest) {
        if (reply_.isOpen() && !failed_) take();
        const bool whole = reply_.error() == QNetworkReply::NoError && ReleaseHost::statusOf(reply_) == 200;
        if (failed_ || !whole || hash_.result().toHex() != QByteArray::fromStdString(digest))
            file_.cancelWriting();
        if (!file_.commit()) return std::nullopt;
        return file_.fileName().toStdString();
    }

private:
    QNetworkReply& reply_;
    QSaveFile file_;
    QCryptographicHash hash_{QCryptographicHash::Sha256};
    std::int64_t received_ = 0;
    bool failed_ = false;
};

} // namespace

void begin(QNetworkAccessManager& network, const ReleaseHost& host, const AppRelease& release,
           const std::filesystem::path& folder, const QObject* receiver, std::function<void(Outcome)> then) {
    if (AtomicFile::makePrivateFolder(folder)) return then(std::nullopt);
    sweep(folder);
    const QString path = QUrl(QString::fromStdString(release.downloadURL)).path();
    QNetworkRequest request = host.request(path);
    request.setTransferTimeout(static_cast<int>(host.patience.count()));
    QNetworkReply* const reply = network.get(request);
    auto* const fetch = new Fetch(*reply, folder / path.section('/', -1).toStdString());
    QObject::connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
    if (!fetch->open()) {
        reply->abort();
        return then(std::nullopt);
    }
    QObject::connect(reply, &QNetworkReply::metaDataChanged, fetch, &Fetch::judgeLength);
    QObject::connect(reply, &QNetworkReply::readyRead, fetch, &Fetch::take);
    QTimer::singleShot(longest, reply, &QNetworkReply::abort);
    QObject::connect(
        reply, &QNetworkReply::finished, receiver,
        [fetch, digest = release.sha256, then = std::move(then)] { then(fetch->finish(digest)); });
}

} // namespace varnet::ArchiveDownload
