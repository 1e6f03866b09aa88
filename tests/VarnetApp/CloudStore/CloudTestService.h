#pragma once

#include "VarnetCore/Base/Clock.h"
#include "tests/fakes/TestAuthority.h"

#include <QByteArray>
#include <QObject>
#include <QSslServer>
#include <QString>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

class QTcpSocket;

namespace varnet {

/// The service, whole but for its web site, on the loopback address: it checks who asks, and when, and keeps
/// what it is given. It can be told to fail in every way that networks and services do.
class CloudTestService : public QObject {
public:
    using Json = nlohmann::json;

    enum class Fault {
        none,
        hang,         ///< takes the request, and no answer ever comes
        cutBefore,    ///< the line goes dead before anything is done
        cutAfter,     ///< everything is done, and the line goes dead in the middle of the answer
        garbage,      ///< a success that says nothing
        brokenReply,  ///< a success whose JSON has none of the keys
        garbageError, ///< a proxy's page
        serverError,  ///< 500 with words of the service
        tooMany,      ///< 429
        expiredToken,
        deletedArchive,
        oversized, ///< an answer without end
        redirect,  ///< to where the answer would be a good one
    };

    /// One record as it arrived.
    using RecordKey = std::tuple<std::string, std::string, std::int64_t>; ///< kind, id, revision

    explicit CloudTestService(const Clock& clock);
    ~CloudTestService() override;

    QString endpoint() const;
    const TestAuthority& authority() const noexcept { return authority_; }
    /// Nobody listens any more; and again, under the same address.
    void stop();
    void resume();

    /// The next requests for an operation fail, one way after the other.
    void fail(const std::string& operation, std::vector<Fault> faults);
    bool faultsAreUsedUp() const;

    // The user at the web site.
    void authorize() { authorized_ = true; }
    /// Somebody has signed in already.
    void admit(const std::string& token) { tokens_.insert(token); }
    void deleteArchive();
    void revokeTokens() { tokens_.clear(); }
    /// Another archive has begun, from another machine.
    void renewArchive() { generation_ = "generation-" + std::to_string(++generations_); }

    // What came of it.
    struct Request {
        std::string operation;
        Json values;
    };
    const std::vector<Request>& requests() const noexcept { return requests_; } ///< those that were in order
    std::size_t count(const std::string& operation) const;
    void forgetRequests() { requests_.clear(); }
    /// What was wrong with requests: signatures, nonces, times, addresses.
    const std::vector<std::string>& complaints() const noexcept { return complaints_; }
    const std::map<RecordKey, Json>& records() const noexcept { return records_; }
    /// How often a record came.
    const std::map<RecordKey, int>& arrivals() const noexcept { return arrivals_; }
    /// The newest revision of an item; null when there is none.
    Json newest(const std::string& kind, const std::string& id) const;
    const std::string& mode() const noexcept { return mode_; }
    const std::string& generation() const noexcept { return generation_; }
    bool hasToken() const noexcept { return !tokens_.empty(); }
    /// Every byte that arrived.
    const QByteArray& received() const noexcept { return received_; }
    /// Connections that were made.
    int connections() const noexcept { return connections_; }

    std::size_t pageSize = 1000;   ///< records of a page
    QString browserPage;           ///< what is to be opened; empty: a page of the service
    std::function<void()> waiting; ///< a request is here and not looked at yet
    std::function<void()> done;    ///< it is done, and its answer not sent yet
    Json feedback;                 ///< the last

private:
    struct Reply {
        int status = 200;
        Json body = Json::object();
    };

    void accept();
    void read(QTcpSocket* socket);
    void take(QTcpSocket* socket, const QString& path, const QByteArray& body);
    /// Who asks, and what; empty when something is wrong with it.
    std::optional<Json> open(const std::string& operation, const QByteArray& body);
    Reply carryOut(const std::string& operation, const Json& values);
    Reply keep(const Json& values);
    Reply page(const Json& values) const;
    Fault nextFault(const std::string& operation);
    static void answer(QTcpSocket* socket, int status, const QByteArray& body, const QByteArray& head = {});
    static Reply refusal(int status, const char* code, const char* message);

    const Clock& clock_;
    const TestAuthority authority_ = TestAuthority::make();
    std::unique_ptr<QSslServer> server_;
    quint16 port_ = 0;
    std::map<QTcpSocket*, QByteArray> unread_;
    std::map<std::string, std::deque<Fault>> faults_;

    std::map<std::string, std::string> keys_; ///< public key by installation
    std::set<std::string> nonces_;
    std::map<std::string, std::string> challenges_; ///< by pairing
    std::map<std::string, Json> exchanged_;         ///< credentials by pairing: an answer may be lost
    std::set<std::string> tokens_;
    bool authorized_ = false;
    bool archived_ = false; ///< there is an archive to add to
    bool deleted_ = false;  ///< the next one is another
    int generations_ = 1;
    std::string generation_ = "generation-1";
    std::string mode_ = "off";
    std::string lastBackup_;
    std::map<RecordKey, Json> records_;
    std::map<RecordKey, int> arrivals_;

    std::vector<Request> requests_;
    std::vector<std::string> complaints_;
    QByteArray received_;
    int connections_ = 0;
};

} // namespace varnet
