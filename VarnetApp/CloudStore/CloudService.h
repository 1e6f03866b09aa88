#pragma once

#include "VarnetApp/CloudStore/CloudAccount.h"

#include <QNetworkAccessManager>
#include <QString>
#include <QUrl>
#include <nlohmann/json_fwd.hpp>

#include <expected>
#include <functional>
#include <optional>
#include <string>

class QSslConfiguration;

namespace varnet {

class Clock;
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

/// Speaks to the service: one signed request at a time asked for, none that blocks. Redirects are refused and
/// long answers cut off. Main thread only.
class CloudService {
public:
    struct Setup {
        QString endpoint; ///< "https://host[:port]"; empty: this build knows no service
        const Clock& clock;
        std::string version;       ///< of the program
        std::string systemVersion; ///< of the system
        /// A test's own authority; null: those of the system.
        const QSslConfiguration* ssl = nullptr;
    };

    static constexpr int timeout = 30'000;               ///< milliseconds
    static constexpr std::int64_t mostBytes = 8'000'000; ///< of an answer

    explicit CloudService(Setup setup);

    bool isConfigured() const { return !setup_.endpoint.isEmpty(); }
    /// The service's own page for a browser.
    QUrl accountPage() const;
    /// Whether a browser may be sent there: encrypted, and the service's own host.
    bool isOwnPage(const QUrl& url) const;

    /// Asks for an operation.
    /// @param values the operation's own keys
    /// @param receiver ends the question with itself
    /// @param then called once, later, with the answer's object or the error
    void request(const InstallationKey& key, const std::string& operation, const nlohmann::json& values,
                 QObject* receiver, std::function<void(CloudReply<nlohmann::json>)> then);
    void send(const Feedback& feedback, QObject* receiver, std::function<void(bool accepted)> then);

private:
    const Setup setup_;
    QNetworkAccessManager network_;
};

} // namespace varnet
