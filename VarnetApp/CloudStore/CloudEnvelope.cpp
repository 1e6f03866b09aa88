#include "VarnetApp/CloudStore/CloudEnvelope.h"

#include "VarnetApp/CloudStore/InstallationKey.h"
#include "VarnetCore/Base/JsonReading.h"
#include "VarnetCore/Base/Uuid.h"

#include <QByteArray>

#include <cmath>
#include <cstdint>

namespace varnet {

namespace {

std::string base64(const std::string& bytes) {
    return QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()))
        .toBase64()
        .toStdString();
}

} // namespace

std::string CloudEnvelope::seal(const InstallationKey& key, const std::string& operation,
                                nlohmann::json values, Date now) {
    values["installationID"] = key.installationID();
    values["publicKey"] = key.publicKey();
    values["nonce"] = Uuid::random().text();
    values["timestamp"] = static_cast<std::int64_t>(std::floor(now.sinceUnixEpoch()));
    values["platform"] = "macos"; // the one name under which the service knows this program
    values["operation"] = operation;
    const std::string inner = JsonReading::dumped(values); // objects keep their keys sorted
    const std::string signature = key.sign(inner);
    if (signature.empty()) return {};
    return JsonReading::dumped({{"payload", base64(inner)}, {"signature", base64(signature)}});
}

} // namespace varnet
