#include "VarnetApp/CloudStore/CloudService.h"

#include "VarnetApp/CloudStore/CloudEnvelope.h"
#include "VarnetApp/CloudStore/InstallationKey.h"
#include "VarnetCore/Base/JsonReading.h"

#include <QIODevice>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslConfiguration>
#include <QTimer>

#include <algorithm>
#include <cstring>
#include <utility>

namespace varnet {

namespace {

/// A body that can be read once. When a connection dies before the answer, the network's own layer would
/// otherwise send the request a second time, of which the first may have been carried out.
class OneTimeBody final : public QIODevice {
public:
    OneTimeBody(std::string bytes, QObject* parent) : QIODevice(parent), bytes_(std::move(bytes)) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    bool reset() override { return false; }
    qint64 size() const override { return static_cast<qint64>(bytes_.size()); }
    qint64 bytesAvailable() const override { return static_cast<qint64>(bytes_.size() - read_); }
    bool atEnd() const override { return read_ == bytes_.size(); }

protected:
    qint64 readData(char* data, qint64 most) override {
        if (atEnd()) return -1;
        const auto length = std::min(static_cast<std::size_t>(most), bytes_.size() - read_);
        std::memcpy(data, bytes_.data() + read_, length);
        read_ += length;
        return static_cast<qint64>(length);
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    const std::string bytes_;
    std::size_t read_ = 0;
};

QUrl serviceOf(const QString& endpoint) {
    const QUrl url(endpoint, QUrl::StrictMode);
    return url.isValid() && url.scheme() == QLatin1String("https") && !url.host().isEmpty() ? url : QUrl();
}

bool isTooLong(const QNetworkReply& reply) {
    return reply.bytesAvailable() > CloudService::mostBytes ||
           reply.header(QNetworkRequest::ContentLengthHeader).toLongLong() > CloudService::mostBytes;
}

int statusOf(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

CloudReply<std::string> answerOf(QNetworkReply& reply) {
    const int status = statusOf(reply);
    if (status == 0 || isTooLong(reply)) return std::unexpected(CloudServiceError::noAnswer());
    std::string body = reply.isOpen() ? reply.readAll().toStdString() : std::string();
    if (status >= 200 && status < 300) {
        // Half an answer to what was done is no answer.
        if (reply.error() != QNetworkReply::NoError) return std::unexpected(CloudServiceError::noAnswer());
        return body;
    }
    return std::unexpected(CloudServiceError::parse(body).value_or(CloudServiceError::noAnswer()));
}

} // namespace

CloudService::CloudService(Setup setup) : setup_(std::move(setup)), base_(serviceOf(setup_.endpoint)) {}

CloudService::~CloudService() = default;

QUrl CloudService::accountPage() const {
    QUrl url = base_;
    url.setPath(QStringLiteral("/account"));
    return url;
}

bool CloudService::isOwnPage(const QUrl& url) const {
    return isConfigured() && url.isValid() && url.scheme() == QLatin1String("https") &&
           url.host() == base_.host();
}

QNetworkReply* CloudService::start(const QString& path, std::string body, QObject* receiver) {
    if (!network_) network_ = std::make_unique<QNetworkAccessManager>();
    QUrl url = base_;
    url.setPath(QStringLiteral("/") + path);
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::ContentTypeHeader, "application/json");
    request.setHeader(QNetworkRequest::UserAgentHeader, "Varnet");
    // A host that may be told to look elsewhere is no host to trust.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    // Who asks is in what is asked, and nowhere else.
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    request.setTransferTimeout(setup_.timeout);
    if (setup_.ssl) request.setSslConfiguration(*setup_.ssl);
    request.setHeader(QNetworkRequest::ContentLengthHeader, static_cast<qint64>(body.size()));
    request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    auto* const device = new OneTimeBody(std::move(body), nullptr);
    QNetworkReply* const reply = network_->post(request, device);
    device->setParent(reply);
    reply->setParent(receiver);
    const auto cutOff = [reply] {
        if (isTooLong(*reply)) reply->abort();
    };
    QObject::connect(reply, &QNetworkReply::metaDataChanged, reply, cutOff);
    QObject::connect(reply, &QNetworkReply::readyRead, reply, cutOff);
    return reply;
}

void CloudService::post(const std::string& operation, std::string body, QObject* receiver,
                        std::function<void(CloudReply<std::string>)> then) {
    if (!isConfigured() || body.empty()) {
        const CloudServiceError error = isConfigured()
                                            ? CloudServiceError::noAnswer()
                                            : CloudServiceError{CloudServiceError::configuration,
                                                                "Cloud is not configured in this build."};
        QTimer::singleShot(0, receiver, [error, then = std::move(then)] { then(std::unexpected(error)); });
        return;
    }
    QNetworkReply* const reply =
        start(QStringLiteral("api/cloud/") + QString::fromStdString(operation), std::move(body), receiver);
    QObject::connect(reply, &QNetworkReply::finished, receiver, [reply, then = std::move(then)] {
        reply->deleteLater();
        then(answerOf(*reply));
    });
}

void CloudService::request(const InstallationKey& key, const std::string& operation, nlohmann::json values,
                           QObject* receiver, std::function<void(CloudReply<nlohmann::json>)> then) {
    post(operation, CloudEnvelope::seal(key, operation, std::move(values), setup_.clock.now()), receiver,
         [then = std::move(then)](CloudReply<std::string> answer) {
             then(answer ? objectOf(*answer) : std::unexpected(answer.error()));
         });
}

CloudReply<nlohmann::json> CloudService::objectOf(const std::string& body) {
    if (body.empty()) return nlohmann::json::object();
    nlohmann::json json = JsonReading::parsed(body);
    if (!json.is_object()) return std::unexpected(CloudServiceError::noAnswer());
    return json;
}

void CloudService::send(const Feedback& feedback, QObject* receiver,
                        std::function<void(bool accepted)> then) {
    if (!isConfigured()) {
        QTimer::singleShot(0, receiver, [then = std::move(then)] { then(false); });
        return;
    }
    nlohmann::json json{{"kind", feedback.kind},        {"title", feedback.title},
                        {"body", feedback.body},        {"platform", "macos"},
                        {"appVersion", setup_.version}, {"osVersion", setup_.systemVersion}};
    if (feedback.email) json["email"] = *feedback.email;
    QNetworkReply* const reply = start(QStringLiteral("api/feedback"), JsonReading::dumped(json), receiver);
    QObject::connect(reply, &QNetworkReply::finished, receiver, [reply, then = std::move(then)] {
        reply->deleteLater();
        const int status = statusOf(*reply);
        then(status >= 200 && status < 300);
    });
}

} // namespace varnet
