#pragma once

#include "VarnetApp/Updates/ReleaseHost.h"

#include <QByteArray>
#include <QObject>
#include <QStringList>
#include <QTcpServer>

#include <map>
#include <string>

namespace varnet::test {

/// A web service on this machine that stands in for the project's site and behaves as badly as it is told.
class LoopbackService : public QObject {
public:
    /// What is sent, and what follows.
    struct Answer {
        enum class Then { close, stay, drip };
        QByteArray bytes;
        Then then = Then::close;
    };

    static constexpr const char* host = "releases.example.test";
    static constexpr const char* feed = "/updates/latest.json";
    static constexpr const char* archive = "/downloads/Varnet-9.9-1000.zip";

    /// @param claimed what the answer says its length is; below zero: the truth
    static QByteArray answer(const QByteArray& status, const QByteArray& body, qint64 claimed = -1);
    static QByteArray ok(const QByteArray& body, qint64 claimed = -1) {
        return answer("200 OK", body, claimed);
    }
    static QByteArray redirect(const QByteArray& to);
    /// Announces version 9.9, build 1000, with the digest of these bytes.
    static QByteArray manifest(const QByteArray& contents, const QByteArray& system = "1.0");

    LoopbackService();

    /// Impatient, so that whoever dawdles is left soon.
    ReleaseHost reached() const;

    std::map<QString, Answer> answers; ///< by path; others are answered with 404
    QStringList asked;                 ///< paths

private:
    void serve(QTcpSocket& socket);

    QTcpServer server_;
};

} // namespace varnet::test
