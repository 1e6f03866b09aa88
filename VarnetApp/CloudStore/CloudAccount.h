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
    std::optional<std::string> pendingMode = {};
    std::optional<bool> pendingDisconnect = {};

    /// A JSON object with the fields' names; what is empty is left out.
    std::string json() const;
    /// Empty for what is no such object: a key is missing, of another type, or the mode is unknown.
    static std::optional<CloudCredentials> parse(std::string_view json);

    /// Whose rows of the queue are meant: one account's archive of one generation.
    std::string scope() const;

    static bool isMode(std::string_view text);
    /// Whether news is to be queued: also not while the user's word to stop is still on its way.
    bool backsUp() const;

    friend bool operator==(const CloudCredentials&, const CloudCredentials&) = default;
};

/// A machine that backs up to the account, as the service tells of it.
struct CloudDevice {
    std::string id;
    std::string name;
    std::string platform;
    std::string mode;
    std::optional<std::string> archivedAt = {};   ///< ISO 8601
    std::optional<std::string> lastBackupAt = {}; ///< ISO 8601

    friend bool operator==(const CloudDevice&, const CloudDevice&) = default;
};

/// Why the service did not do what was asked.
struct CloudServiceError {
    // What the service says.
    static constexpr const char* authorizationPending = "authorization_pending"; ///< the browser is not done
    static constexpr const char* invalidToken = "invalid_token";                 ///< expired or taken back
    static constexpr const char* archiveDeleted = "archive_deleted"; ///< there is nothing to add to any more
    // What is said here: this build knows no service; it cannot be reached, or speaks of something else.
    static constexpr const char* configuration = "configuration";
    static constexpr const char* unavailable = "unavailable";

    std::string code;
    std::string message; ///< for the user

    /// Nobody has answered, or with what cannot be understood.
    static CloudServiceError noAnswer() {
        return {unavailable, "Cloud is unavailable. Local monitoring continues."};
    }
    /// The user's passwords cannot be reached.
    static CloudServiceError keychain() {
        return {"keychain", "Couldn’t read your cloud account. Unlock your Mac and try again."};
    }
    /// What waits to be sent cannot be kept or read; it is tried again, as with a network that fails.
    static CloudServiceError queue() {
        return {unavailable, "Cloud history could not be queued. Check available disk space."};
    }
    /// What the service gives as its reason; empty for what is none.
    static std::optional<CloudServiceError> parse(std::string_view json);
    /// More than a network that fails in passing: the service itself has spoken, or the keychain.
    bool isAnswer() const { return code != unavailable && code != configuration; }

    friend bool operator==(const CloudServiceError&, const CloudServiceError&) = default;
};

} // namespace varnet
