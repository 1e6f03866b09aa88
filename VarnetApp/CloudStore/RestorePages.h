#pragma once

#include "VarnetApp/CloudStore/CloudAccount.h"
#include "VarnetCore/Hall/FlameArchive.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <expected>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace varnet {

/// Collects what a restore needs out of the pages that the service sends. A plain value for one thread at a
/// time; reading a full page takes a while.
class RestorePages {
public:
    /// What the longest history of one machine comes nowhere near.
    static constexpr int mostPages = 5'000;
    static constexpr std::size_t mostKept = 32'000'000; ///< bytes of records that matter

    /// @param body an answer
    /// @param cursor that it answers
    /// @return the cursor of the next page; empty: this was the last
    std::expected<std::string, CloudServiceError> take(const std::string& body, const std::string& cursor);

    /// The collection with its days; empty when none is backed up.
    std::optional<FlameArchive> collection() const;

private:
    struct Row {
        double revision = 0;
        nlohmann::json record;
    };

    int pages_ = 0;
    std::size_t kept_ = 0;
    std::string generation_;                                  ///< of the first page
    std::map<std::pair<std::string, std::string>, Row> rows_; ///< the newest of each, by kind and id
};

} // namespace varnet
