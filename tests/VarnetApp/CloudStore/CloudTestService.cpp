#include "tests/VarnetApp/CloudStore/CloudTestService.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QSslConfiguration>
#include <QTcpSocket>
#include <openssl/evp.h>
#include <openssl/x509.h>

#include <cmath>
#include <stdexcept>

namespace varnet {

namespace {

constexpr double clockTolerance = 300; ///< seconds

QByteArray fromBase64(const CloudTestService::Json& text) {
    return text.is_string() ? QByteArray::fromBase64(QByteArray::fromStdString(text.get<std::string>()))
                            : QByteArray();
}

const unsigned char* bytes(const QByteArray& data) {
    return reinterpret_cast<const unsigned char*>(data.constData());
}

bool isSigned(const QByteArray& payload, const QByteArray& signature, const QByteArray& publicKey) {
    const unsigned char* begin = bytes(publicKey);
    const std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key(
        d2i_PUBKEY(nullptr, &begin, static_cast<long>(publicKey.size())), EVP_PKEY_free);
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
    return key && EVP_DigestVerifyInit(context.get(), nullptr, EVP_sha256(), nullptr, key.get()) == 1 &&
           EVP_DigestVerify(context.get(), bytes(signature), static_cast<std::size_t>(signature.size()),
                            bytes(payload), static_cast<std::size_t>(payload.size())) == 1;
}

} // namespace

CloudTestService::CloudTestService(const Clock& clock) : clock_(clock) {
    resume();
}

CloudTestService::~CloudTestService() = default;

QString CloudTestService::endpoint() const {
    return QStringLiteral("https://127.0.0.1:%1").arg(port_);
}

void CloudTestService::stop() {
    for (const auto& [socket, data] : unread_) {
        socket->disconnect(this);
        socket->abort();
        socket->deleteLater();
    }
    unread_.clear();
    server_.reset();
}

void CloudTestService::resume() {
    server_ = std::make_unique<QSslServer>();
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(authority_.certificate);
    configuration.setPrivateKey(authority_.key);
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    server_->setSslConfiguration(configuration);
    connect(server_.get(), &QSslServer::pendingConnectionAvailable, this, [this] { accept(); });
    if (!server_->listen(QHostAddress::LocalHost, port_)) throw std::runtime_error("cannot listen");
    port_ = server_->serverPort();
}

void CloudTestService::fail(const std::string& operation, std::vector<Fault> faults) {
    faults_[operation].insert(faults_[operation].end(), faults.begin(), faults.end());
}

bool CloudTestService::faultsAreUsedUp() const {
    for (const auto& [operation, faults] : faults_)
        if (!faults.empty()) return false;
    return true;
}

CloudTestService::Fault CloudTestService::nextFault(const std::string& operation) {
    std::deque<Fault>& faults = faults_[operation];
    if (faults.empty()) return Fault::none;
    const Fault fault = faults.front();
    faults.pop_front();
    return fault;
}

void CloudTestService::deleteArchive() {
    archived_ = false;
    deleted_ = true;
    mode_ = "off";
    records_.clear();
    arrivals_.clear();
}

std::size_t CloudTestService::count(const std::string& operation) const {
    std::size_t found = 0;
    for (const Request& request : requests_)
        if (request.operation == operation) ++found;
    return found;
}

CloudTestService::Json CloudTestService::newest(const std::string& kind, const std::string& id) const {
    Json found;
    for (const auto& [key, record] : records_)
        if (std::get<0>(key) == kind && std::get<1>(key) == id) found = record; // revisions rise
    return found;
}

// The wire.

void CloudTestService::accept() {
    while (QTcpSocket* const socket = server_->nextPendingConnection()) {
        ++connections_;
        socket->setParent(this);
        unread_[socket];
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            unread_.erase(socket);
            socket->deleteLater();
        });
        read(socket);
    }
}

void CloudTestService::read(QTcpSocket* socket) {
    const QByteArray news = socket->readAll();
    received_ += news;
    const auto unread = unread_.find(socket);
    if (unread == unread_.end()) return;
    unread->second += news;
    const qsizetype end = unread->second.indexOf("\r\n\r\n");
    if (end < 0) return;
    const QList<QByteArray> head = unread->second.left(end).split('\n');
    qsizetype length = 0;
    for (const QByteArray& line : head)
        if (line.toLower().startsWith("content-length:")) length = line.mid(15).trimmed().toLongLong();
    if (unread->second.size() < end + 4 + length) return;
    const QByteArray body = unread->second.mid(end + 4, length);
    unread->second.remove(0, end + 4 + length);
    const QList<QByteArray> first = head.first().split(' ');
    const bool json = head.contains("Content-Type: application/json\r");
    if (first.size() < 2 || first[0] != "POST" || !json)
        complaints_.emplace_back("no such request: " + head.first().toStdString());
    take(socket, QString::fromLatin1(first.value(1)), body);
}

void CloudTestService::answer(QTcpSocket* socket, int status, const QByteArray& body,
                              const QByteArray& head) {
    socket->write("HTTP/1.1 " + QByteArray::number(status) + " Said\r\nContent-Type: application/json\r\n" +
                  head + "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body);
}

void CloudTestService::take(QTcpSocket* socket, const QString& path, const QByteArray& body) {
    if (path == QLatin1String("/api/feedback")) {
        const Fault fault = nextFault("feedback");
        if (fault == Fault::cutBefore) return socket->abort();
        if (fault == Fault::serverError) return answer(socket, 500, "{}");
        feedback = Json::parse(body.toStdString(), nullptr, false);
        return answer(socket, 200, "{}");
    }
    const QString prefix = QStringLiteral("/api/cloud/");
    if (!path.startsWith(prefix)) {
        complaints_.push_back("no such address: " + path.toStdString());
        return answer(socket, 404, "not here");
    }
    const std::string operation = path.mid(prefix.size()).toStdString();
    if (waiting) waiting();
    const Fault fault = nextFault(operation);
    const auto refuse = [&](int status, const char* code) {
        const Reply reply = refusal(status, code, "The service says no.");
        answer(socket, reply.status, QByteArray::fromStdString(reply.body.dump()));
    };
    switch (fault) {
    case Fault::hang:
        return;
    case Fault::cutBefore:
        return socket->abort();
    case Fault::garbage:
        return answer(socket, 200, "<html>hello</html>");
    case Fault::brokenReply:
        return answer(socket, 200, R"({"generation":7,"records":{},"pairingID":null,"url":[]})");
    case Fault::garbageError:
        return answer(socket, 502, "<html>bad gateway</html>");
    case Fault::serverError:
        return refuse(500, "internal");
    case Fault::tooMany:
        return refuse(429, "rate_limited");
    case Fault::expiredToken:
        tokens_.clear();
        return refuse(401, "invalid_token");
    case Fault::deletedArchive:
        deleteArchive();
        return refuse(410, "archive_deleted");
    case Fault::oversized:
        socket->write("HTTP/1.1 200 Said\r\nConnection: close\r\n\r\n{\"generation\":\"");
        socket->write(QByteArray(12'000'000, 'g') + "\"}");
        return socket->disconnectFromHost();
    case Fault::redirect:
        return answer(socket, 307, "", "Location: " + (endpoint() + path).toLatin1() + "\r\n");
    case Fault::cutAfter:
    case Fault::none:
        break;
    }
    const auto values = open(operation, body);
    if (!values) return refuse(400, "malformed");
    const Reply reply = carryOut(operation, *values);
    if (done) done();
    const QByteArray text = QByteArray::fromStdString(reply.body.dump());
    if (fault == Fault::cutAfter) {
        socket->write("HTTP/1.1 200 Said\r\nContent-Length: " + QByteArray::number(text.size() + 100) +
                      "\r\n\r\n" + text.left(text.size() / 2));
        return socket->disconnectFromHost();
    }
    answer(socket, reply.status, text);
}

// What it does.

std::optional<CloudTestService::Json> CloudTestService::open(const std::string& operation,
                                                             const QByteArray& body) {
    const auto complain = [&](const char* what) {
        complaints_.push_back(operation + ": " + what);
        return std::nullopt;
    };
    const Json outer = Json::parse(body.toStdString(), nullptr, false);
    if (!outer.is_object() || outer.size() != 2) return complain("no envelope");
    const QByteArray payload = fromBase64(outer.value("payload", Json()));
    const Json inner = Json::parse(payload.toStdString(), nullptr, false);
    if (!inner.is_object()) return complain("no payload");
    // A payload whose keys are not sorted, or come twice, does not read back as it was.
    if (inner.dump() != payload.toStdString()) return complain("keys are not sorted");
    const std::string installation = inner.value("installationID", "");
    const std::string key = inner.value("publicKey", "");
    if (installation.size() != 36 || keys_.try_emplace(installation, key).first->second != key)
        return complain("another key than the registered one");
    if (!isSigned(payload, fromBase64(outer.value("signature", Json())), fromBase64(key)))
        return complain("not signed by it");
    if (!nonces_.insert(inner.value("nonce", "")).second) return complain("a nonce that was here before");
    if (std::abs(inner.value("timestamp", 0.0) - clock_.now().sinceUnixEpoch()) > clockTolerance)
        return complain("of another time");
    if (inner.value("operation", "") != operation || inner.value("platform", "") != "macos")
        return complain("meant for something else");
    requests_.push_back({operation, inner});
    return inner;
}

CloudTestService::Reply CloudTestService::refusal(int status, const char* code, const char* message) {
    return {status, {{"code", code}, {"message", message}}};
}

CloudTestService::Reply CloudTestService::carryOut(const std::string& operation, const Json& values) {
    if (operation == "pair") {
        const std::string id = "pairing-" + std::to_string(challenges_.size() + 1);
        challenges_[id] = values.value("challenge", "");
        const QString page = browserPage.isEmpty() ? endpoint() + "/connect" : browserPage;
        return {200, {{"pairingID", id}, {"url", page.toStdString()}}};
    }
    if (operation == "exchange") {
        const std::string id = values.value("pairingID", "");
        const QByteArray verifier = QByteArray::fromStdString(values.value("verifier", ""));
        const QByteArray challenge =
            QCryptographicHash::hash(verifier, QCryptographicHash::Sha256).toBase64();
        if (!challenges_.contains(id) || challenges_[id] != challenge.toStdString())
            return refusal(403, "wrong_verifier", "This sign-in is not yours.");
        if (!authorized_) return refusal(400, "authorization_pending", "Not yet.");
        if (!exchanged_.contains(id)) {
            const std::string token = "token-" + std::to_string(exchanged_.size() + 1);
            exchanged_[id] = {{"token", token},
                              {"deviceID", "device-1"},
                              {"accountID", "account-1"},
                              {"email", "someone@example.org"},
                              {"generation", generation_},
                              {"mode", mode_}};
            tokens_.insert(token);
        }
        return {200, exchanged_[id]};
    }
    if (!tokens_.contains(values.value("token", "")))
        return refusal(401, "invalid_token", "Please sign in again.");
    if (operation == "status") {
        Json device{{"id", "device-1"}, {"name", "This one"}, {"platform", "macos"}, {"mode", mode_}};
        if (!lastBackup_.empty()) device["lastBackupAt"] = lastBackup_;
        return {200, {{"generation", generation_}, {"mode", mode_}, {"devices", {device}}}};
    }
    if (operation == "policy") {
        if (values.value("consent", "") != "2026-10-cloud-v1") return refusal(400, "consent", "No consent.");
        mode_ = values.value("mode", "");
        if (mode_ != "off" && !archived_) {
            if (std::exchange(deleted_, false)) renewArchive();
            archived_ = true;
        }
        return {200, {{"generation", generation_}}};
    }
    if (operation == "sync") return keep(values);
    if (operation == "restore") return page(values);
    if (operation == "disconnect") {
        tokens_.erase(values.value("token", ""));
        return {};
    }
    return refusal(404, "unknown", "No such operation.");
}

CloudTestService::Reply CloudTestService::keep(const Json& values) {
    if (!archived_ || mode_ == "off" || values.value("generation", "") != generation_)
        return refusal(410, "archive_deleted", "This archive is no more.");
    const Json& records = values.at("records");
    if (!records.is_array() || records.empty() || records.size() > 100)
        return refusal(400, "malformed", "Not a batch.");
    for (const Json& record : records) {
        const RecordKey key{record.value("kind", ""), record.value("id", ""),
                            record.value("revision", std::int64_t{0})};
        ++arrivals_[key];
        records_.emplace(key, record); // once
    }
    lastBackup_ = QDateTime::fromMSecsSinceEpoch(std::llround(clock_.now().sinceUnixEpoch() * 1000), Qt::UTC)
                      .toString(Qt::ISODateWithMs)
                      .toStdString();
    return {};
}

CloudTestService::Reply CloudTestService::page(const Json& values) const {
    const std::string cursor = values.value("cursor", "");
    const std::size_t first = cursor.empty() ? 0 : std::stoul(cursor);
    Reply reply{200, {{"generation", generation_}, {"records", Json::array()}}};
    std::size_t place = 0;
    for (const auto& [key, record] : records_) {
        if (place >= first && place < first + pageSize) reply.body["records"].push_back(record);
        ++place;
    }
    if (first + pageSize < place) reply.body["nextCursor"] = std::to_string(first + pageSize);
    return reply;
}

} // namespace varnet
