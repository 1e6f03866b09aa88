#pragma once

#include "VarnetApp/CloudStore/CloudAccount.h"
#include "VarnetCore/Base/Clock.h"

#include <QString>
#include <QUrl>
#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QNetworkAccessManager;
class QNetworkReply;
class QNetworkRequest;
class QObject;
class QSslConfiguration;

namespace varnet {

class InstallationKey;

template <typename Value>
using CloudReply = std::expected<Value, CloudServiceError>;

/// What a user writes to the makers of the program.
struct Feedback {
    std::string kind;
    std::string title;
    std::string body;
    std::optional<std::string> email; ///< empty: no answer is wanted
};

/// Speaks to the service, without waiting. Redirects are refused and long answers cut off. Costs nothing
/// before it is first asked. Main thread only.
class CloudService {
public:
    static constexpr int timeout = 30'000;               ///< milliseconds in which nothing moves
    static constexpr std::int64_t mostBytes = 8'000'000; ///< of an answer

    struct Setup {
        QString endpoint; ///< "https://host[:port]"; anything else: this build knows no service
        const Clock& clock;
        std::string version;       ///< of the program
        std::string systemVersion; ///< of the system
        /// A test's own authority; null: those of the system.
        const QSslConfiguration* ssl = nullptr;
        int timeout = CloudService::timeout;
    };

    explicit CloudService(Setup setup);
    ~CloudService();

    bool isConfigured() const { return !base_.isEmpty(); }
    /// The service's own page for a browser.
    QUrl accountPage() const;
    /// Whether a browser may be sent there: encrypted, and the service's own host.
    bool isOwnPage(const QUrl& url) const;

    /// Asks for an operation, with keys to be sealed and an answer to be read here: for small ones.
    /// @param values the operation's own keys
    /// @param receiver ends the question with itself
    /// @param then called once, later, with the answer's object or the error
    void request(const InstallationKey& key, const std::string& operation, nlohmann::json values,
                 QObject* receiver, std::function<void(CloudReply<nlohmann::json>)> then);
    /// The same with a sealed body (empty: it could not be sealed), and the answer as it came.
    void post(const std::string& operation, std::string body, QObject* receiver,
              std::function<void(CloudReply<std::string>)> then);
    /// The object of an answer; an empty one for an answer of no bytes, which is all that some operations
    /// give. What is no JSON is no answer.
    static CloudReply<nlohmann::json> objectOf(const std::string& body);

    void send(const Feedback& feedback, QObject* receiver, std::function<void(bool accepted)> then);

private:
    QNetworkReply* start(const QString& path, std::string body, QObject* receiver);

    const Setup setup_;
    const QUrl base_; ///< empty: no service
    std::unique_ptr<QNetworkAccessManager> network_;
};

} // namespace varnet
