#include "VarnetCore/Cloud/CloudItem.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace varnet {

namespace {

bool isFinite(const nlohmann::json& json) {
    if (json.is_number_float()) return std::isfinite(json.get<double>());
    for (const auto& inner : json)
        if (inner.is_structured() || inner.is_number_float())
            if (!isFinite(inner)) return false;
    return true;
}

} // namespace

std::optional<CloudItem> CloudItem::make(std::string kind, std::string id, double at,
                                         const nlohmann::json& payload, std::string aggregationKey) {
    if (!std::isfinite(at) || !isFinite(payload)) return std::nullopt;
    // Names are bytes: what is no UTF-8 in them is written as a replacement.
    return CloudItem{std::move(kind), std::move(id), at,
                     payload.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace),
                     std::move(aggregationKey)};
}

} // namespace varnet
