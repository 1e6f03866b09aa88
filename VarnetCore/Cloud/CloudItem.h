#pragma once

#include <nlohmann/json_fwd.hpp>

#include <expected>
#include <optional>
#include <string>

namespace varnet {

/// What can go wrong with what is kept for the backup on this machine.
enum class CloudStorageError {
    fileReadCorruptFile, ///< the queue cannot be opened
    fileReadUnknown,
    fileWriteUnknown,
    serialization, ///< a value has no form in JSON
};

template <typename Value = void>
using CloudResult = std::expected<Value, CloudStorageError>;

/// One thing worth backing up.
struct CloudItem {
    std::string kind;           ///< "collection", "day", "battery", "health", "session" or "app"
    std::string id;             ///< unique within the kind
    double at = 0;              ///< seconds since 1970
    std::string data;           ///< a JSON object with sorted keys: equal contents are equal texts
    std::string aggregationKey; ///< tells collectors apart whose minutes are summed; empty: not summed

    /// @return empty when some number of the payload has no form in JSON
    static std::optional<CloudItem> make(std::string kind, std::string id, double at,
                                         const nlohmann::json& payload, std::string aggregationKey = {});

    friend bool operator==(const CloudItem&, const CloudItem&) = default;
};

} // namespace varnet
