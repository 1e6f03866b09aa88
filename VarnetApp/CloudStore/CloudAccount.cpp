#include "VarnetApp/CloudStore/CloudAccount.h"

#include "VarnetCore/Base/JsonReading.h"

namespace varnet {

using JsonReading::Json;
using JsonReading::readKey;

std::string CloudCredentials::json() const {
    Json json{{"token", token}, {"deviceID", deviceID},     {"accountID", accountID},
              {"email", email}, {"generation", generation}, {"mode", mode}};
    if (pendingMode) json["pendingMode"] = *pendingMode;
    if (pendingDisconnect) json["pendingDisconnect"] = *pendingDisconnect;
    return JsonReading::dumped(json);
}

std::optional<CloudCredentials> CloudCredentials::parse(std::string_view text) {
    const Json json = JsonReading::parsed(text);
    CloudCredentials read;
    const bool whole = readKey(json, "token", read.token) && readKey(json, "deviceID", read.deviceID) &&
                       readKey(json, "accountID", read.accountID) && readKey(json, "email", read.email) &&
                       readKey(json, "generation", read.generation) && readKey(json, "mode", read.mode) &&
                       readKey(json, "pendingMode", read.pendingMode) &&
                       readKey(json, "pendingDisconnect", read.pendingDisconnect);
    if (!whole || !isMode(read.mode) || (read.pendingMode && !isMode(*read.pendingMode))) return std::nullopt;
    return read;
}

std::string CloudCredentials::scope() const {
    return JsonReading::dumped(Json{accountID, generation}); // whatever is in them, no two of them look alike
}

bool CloudCredentials::isMode(std::string_view text) {
    return text == "off" || text == "private" || text == "community";
}

bool CloudCredentials::backsUp() const {
    return mode != "off" && pendingMode != "off" && !pendingDisconnect.value_or(false);
}

std::optional<CloudServiceError> CloudServiceError::parse(std::string_view text) {
    const Json json = JsonReading::parsed(text);
    CloudServiceError error;
    if (!readKey(json, "code", error.code) || !readKey(json, "message", error.message)) return std::nullopt;
    // The two words of our own are for when nobody has answered.
    if (error.code.empty() || error.message.empty() || !error.isAnswer()) return std::nullopt;
    return error;
}

} // namespace varnet
