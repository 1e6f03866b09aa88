#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// What this installation holds of an account. Kept with the user's passwords, never in a file.
struct CloudCredentials {
    std::string token;
    std::string deviceID;
    std::string accountID;
    std::string email;
    std::string generation;   ///< names one archive of the account; another one begins a fresh queue
    std::string mode = "off"; ///< "off", "private" or "community"
    std::optional<std::string> pendingMode;
    std::optional<bool> pendingDisconnect;

    /// A JSON object with the fields' names; what is empty is left out.
    std::string json() const;
    /// Empty for what is no such object: a key is missing, of another type, or the mode is unknown.
    static std::optional<CloudCredentials> parse(std::string_view json);

    /// Whose rows of the queue are meant: one account's archive of one generation.
    std::string scope() const;

    friend bool operator==(const CloudCredentials&, const CloudCredentials&) = default;
};

/// A machine that backs up to the account, as the service tells of it.
struct CloudDevice {
    std::string id;
    std::string name;
    std::string platform;
    std::string mode;
    std::optional<std::string> archivedAt;   ///< ISO 8601
    std::optional<std::string> lastBackupAt; ///< ISO 8601

    friend bool operator==(const CloudDevice&, const CloudDevice&) = default;
};

/// Why the service did not do what was asked.
struct CloudServiceError {
    std::string code;
    std::string message; ///< for the user

    friend bool operator==(const CloudServiceError&, const CloudServiceError&) = default;
};

} // namespace varnet
