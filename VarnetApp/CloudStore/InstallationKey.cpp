#include "VarnetApp/CloudStore/InstallationKey.h"

#include "VarnetCore/Base/AtomicFile.h"
#include "VarnetCore/Base/JsonReading.h"
#include "VarnetCore/Base/SmallFile.h"

#include <QByteArray>
#include <openssl/evp.h>
#include <openssl/x509.h>

#include <vector>

namespace varnet {

namespace {

using JsonReading::Json;

constexpr std::size_t tooLarge = 16'384; ///< bytes; a key takes some hundred

struct FreeKey {
    void operator()(EVP_PKEY* key) const noexcept { EVP_PKEY_free(key); }
};
struct FreeContext {
    void operator()(EVP_MD_CTX* context) const noexcept { EVP_MD_CTX_free(context); }
};
using KeyHandle = std::unique_ptr<EVP_PKEY, FreeKey>;

std::string base64(const std::vector<unsigned char>& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()))
        .toBase64()
        .toStdString();
}

/// One of OpenSSL's two ways of writing a key in DER.
template <typename Write>
std::vector<unsigned char> der(EVP_PKEY* key, Write write) {
    const int size = write(key, nullptr);
    if (size <= 0) return {};
    std::vector<unsigned char> bytes(static_cast<std::size_t>(size));
    unsigned char* end = bytes.data();
    write(key, &end);
    return bytes;
}

bool isP256(EVP_PKEY* key) {
    char curve[64] = {};
    std::size_t length = 0;
    return key && EVP_PKEY_get_group_name(key, curve, sizeof curve, &length) == 1 &&
           std::string_view(curve) == "prime256v1";
}

KeyHandle readKey(const std::string& text) {
    const auto bytes = QByteArray::fromBase64Encoding(QByteArray::fromStdString(text),
                                                      QByteArray::AbortOnBase64DecodingErrors);
    if (!bytes) return nullptr;
    const auto* begin = reinterpret_cast<const unsigned char*>(bytes.decoded.constData());
    KeyHandle key(d2i_AutoPrivateKey(nullptr, &begin, static_cast<long>(bytes.decoded.size())));
    return isP256(key.get()) ? std::move(key) : nullptr;
}

} // namespace

struct InstallationKey::Key {
    KeyHandle handle;
};

std::optional<InstallationKey> InstallationKey::open(const std::filesystem::path& file) {
    if (mayExist(file)) {
        const auto text = readSmallTextFile(file.string(), tooLarge);
        if (!text) return std::nullopt;
        const Json json = JsonReading::parsed(*text);
        Uuid id;
        std::string secret;
        if (!JsonReading::readKey(json, "installationID", id) ||
            !JsonReading::readKey(json, "privateKey", secret))
            return std::nullopt;
        KeyHandle handle = readKey(secret);
        if (!handle) return std::nullopt;
        return InstallationKey(id.text(), std::make_shared<const Key>(Key{std::move(handle)}));
    }
    KeyHandle handle(EVP_EC_gen("P-256"));
    if (!handle) return std::nullopt;
    const auto secret = der(handle.get(), i2d_PrivateKey);
    const std::string id = Uuid::random().text();
    const Json json{{"installationID", id}, {"privateKey", base64(secret)}};
    if (secret.empty() || AtomicFile::makePrivateFolder(file.parent_path()) ||
        AtomicFile::write(file, json.dump()))
        return std::nullopt;
    return InstallationKey(id, std::make_shared<const Key>(Key{std::move(handle)}));
}

std::string InstallationKey::publicKey() const {
    return base64(der(key_->handle.get(), i2d_PUBKEY));
}

std::string InstallationKey::sign(std::string_view bytes) const {
    const std::unique_ptr<EVP_MD_CTX, FreeContext> context(EVP_MD_CTX_new());
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    std::size_t size = 0;
    if (!context ||
        EVP_DigestSignInit(context.get(), nullptr, EVP_sha256(), nullptr, key_->handle.get()) != 1 ||
        EVP_DigestSign(context.get(), nullptr, &size, data, bytes.size()) != 1)
        return {};
    std::string signature(size, '\0');
    if (EVP_DigestSign(context.get(), reinterpret_cast<unsigned char*>(signature.data()), &size, data,
                       bytes.size()) != 1)
        return {};
    signature.resize(size);
    return signature;
}

} // namespace varnet
