#include "tests/VarnetApp/Updates/LoopbackService.h"

#include <QCryptographicHash>
#include <QTcpSocket>
#include <QTimer>

namespace varnet::test {

QByteArray LoopbackService::answer(const QByteArray& status, const QByteArray& body, qint64 claimed) {
    const qint64 length = claimed < 0 ? body.size() : claimed;
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(length) +
           "\r\nConnection: close\r\n\r\n" + body;
}

QByteArray LoopbackService::redirect(const QByteArray& to) {
    return "HTTP/1.1 302 Found\r\nLocation: " + to + "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
}

QByteArray LoopbackService::manifest(const QByteArray& contents, const QByteArray& system) {
    const QByteArray digest = QCryptographicHash::hash(contents, QCryptographicHash::Sha256).toHex();
    return R"({"schemaVersion": 1, "version": "9.9", "build": 1000, "minimumSystemVersion": ")" + system +
           R"(", "architecture": "arm64", "downloadURL": "https://)" + host + archive + R"(", "sha256": ")" +
           digest + R"(", "notes": ["First note"]})";
}

LoopbackService::LoopbackService() {
    server_.listen(QHostAddress::LocalHost);
    connect(&server_, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* const socket = server_.nextPendingConnection())
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(*socket); });
    });
}

ReleaseHost LoopbackService::reached() const {
    return {.name = host,
            .reroute = QUrl(QString("http://127.0.0.1:%1").arg(server_.serverPort())),
            .patience = std::chrono::milliseconds(400)};
}

void LoopbackService::serve(QTcpSocket& socket) {
    if (!socket.peek(65'536).contains("\r\n\r\n")) return;
    const QString path = QString::fromLatin1(socket.readAll().split(' ').value(1));
    asked.append(path);
    const auto found = answers.find(path);
    const Answer given = found == answers.end() ? Answer{answer("404 Not Found", "nothing")} : found->second;
    socket.write(given.bytes);
    if (given.then == Answer::Then::close) socket.disconnectFromHost();
    if (given.then != Answer::Then::drip) return;
    auto* const drops = new QTimer(&socket);
    connect(drops, &QTimer::timeout, &socket, [&socket] { socket.write(" "); });
    drops->start(50);
}

} // namespace varnet::test
