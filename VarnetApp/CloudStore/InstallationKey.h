#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace varnet {

/// What this installation signs with: an identity and a P-256 key. Immutable.
class InstallationKey {
public:
    /// Reads the key, and makes it when there is none. The file is its user's alone.
    /// @return empty when it cannot be read or kept; a file that is there is never written over
    static std::optional<InstallationKey> open(const std::filesystem::path& file);

    const std::string& installationID() const noexcept { return id_; } ///< a UUID
    std::string publicKey() const;                                     ///< base64 of its DER form
    /// ECDSA over SHA-256 in DER form. Empty when it fails.
    std::string sign(std::string_view bytes) const;

private:
    struct Key;
    InstallationKey(std::string id, std::shared_ptr<const Key> key)
        : id_(std::move(id)), key_(std::move(key)) {}

    std::string id_;
    std::shared_ptr<const Key> key_;
};

} // namespace varnet
