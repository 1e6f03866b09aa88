#include "VarnetApp/Updates/ReleaseFeed.h"

#include "VarnetApp/Updates/UpdateRedirectPolicy.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTimer>

#include <memory>

namespace varnet {

namespace {

constexpr qint64 mostBytes = AppRelease::mostBytes;

/// What has come so far.
struct Received {
    QByteArray bytes; ///< one more than may be, at most: that tells of too much
    bool late = false;

    bool tooLong() const { return bytes.size() > mostBytes; }
    void take(QNetworkReply& reply) { bytes += reply.read(mostBytes + 1 - bytes.size()); }
};

ReleaseFeed::Answer judge(const QNetworkReply& reply, const Received& received, const std::string& host) {
    const int status = ReleaseHost::statusOf(reply);
    if (UpdateRedirectPolicy::refuses(status)) return std::unexpected("the server redirects");
    if (received.tooLong()) return std::unexpected("the answer is too long");
    if (received.late) return std::unexpected("the server takes too long");
    if (status != 0 && status != 200)
        return std::unexpected(QString("the server answered with status %1").arg(status));
    if (reply.error() != QNetworkReply::NoError) return std::unexpected(reply.errorString());
    const std::string_view text{received.bytes.constData(), static_cast<std::size_t>(received.bytes.size())};
    auto release = AppRelease::decode(text, host);
    if (!release) return std::unexpected("the manifest is not valid");
    return std::move(*release);
}

} // namespace

void ReleaseFeed::read(const QObject* receiver, std::function<void(Answer)> then) {
    QNetworkReply* const reply = network_.get(host_.request("/updates/latest.json"));
    reply->setReadBufferSize(mostBytes + 1);
    const auto received = std::make_shared<Received>();
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply, received] {
        received->take(*reply);
        if (received->tooLong()) reply->abort();
    });
    // From the question to the last byte: a server may also dawdle byte by byte.
    QTimer::singleShot(host_.patience, reply, [reply, received] {
        received->late = reply->isRunning();
        reply->abort();
    });
    QObject::connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
    QObject::connect(reply, &QNetworkReply::finished, receiver,
                     [reply, received, host = host_.name, then = std::move(then)] {
                         if (reply->isOpen()) received->take(*reply);
                         then(judge(*reply, *received, host));
                     });
}

} // namespace varnet
