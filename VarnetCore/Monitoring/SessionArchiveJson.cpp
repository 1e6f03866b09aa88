#include "VarnetCore/Monitoring/SessionArchive.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <concepts>
#include <cstddef>
#include <limits>
#include <utility>

namespace varnet {
namespace {

using Json = nlohmann::json;

/// Deeper than any archive; what is nested further is not one of ours.
constexpr std::size_t deepestNesting = 128;

/// Looks at brackets outside strings only; the parser judges the rest.
bool isNestedTooDeep(std::string_view json) noexcept {
    std::size_t depth = 0;
    bool quoted = false;
    for (std::size_t at = 0; at < json.size(); ++at) {
        const char c = json[at];
        if (quoted) {
            if (c == '\\') ++at;
            if (c == '"') quoted = false;
        } else if (c == '"') {
            quoted = true;
        } else if (c == '[' || c == '{') {
            if (++depth > deepestNesting) return true;
        } else if ((c == ']' || c == '}') && depth > 0) {
            --depth;
        }
    }
    return false;
}

// Each read answers whether the value has the right type and fits, and fills the field only then.

bool read(const Json& json, std::string& value) {
    const auto* text = json.get_ptr<const Json::string_t*>();
    if (text) value = *text;
    return text != nullptr;
}

template <std::integral Integer>
bool read(const Json& json, Integer& value) {
    if (const auto* natural = json.get_ptr<const Json::number_unsigned_t*>()) {
        if (!std::in_range<Integer>(*natural)) return false;
        value = static_cast<Integer>(*natural);
        return true;
    }
    if (const auto* integer = json.get_ptr<const Json::number_integer_t*>()) {
        if (!std::in_range<Integer>(*integer)) return false;
        value = static_cast<Integer>(*integer);
        return true;
    }
    const auto* number = json.get_ptr<const Json::number_float_t*>();
    if (!number || *number != std::trunc(*number)) return false;
    // Both bounds are powers of two (or zero), which a double holds exactly.
    const double beyond = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
    const double lowest = static_cast<double>(std::numeric_limits<Integer>::min());
    if (*number < lowest || *number >= beyond) return false;
    value = static_cast<Integer>(*number);
    return true;
}

bool read(const Json& json, Date& value) {
    if (!json.is_number()) return false;
    value.seconds = json.get<double>();
    return true;
}

bool read(const Json& json, Uuid& value) {
    const auto* text = json.get_ptr<const Json::string_t*>();
    const auto uuid = text ? Uuid::fromText(*text) : std::nullopt;
    if (uuid) value = *uuid;
    return uuid.has_value();
}

bool read(const Json& json, Confidence& value) {
    const auto* text = json.get_ptr<const Json::string_t*>();
    const auto confidence = text ? confidenceFromRawValue(*text) : std::nullopt;
    if (confidence) value = *confidence;
    return confidence.has_value();
}

bool read(const Json& json, ProcessIdentity& value);
bool read(const Json& json, Attribution& value);
bool read(const Json& json, SavedLineage& value);
bool read(const Json& json, HistoryRecord& value);

template <typename Element>
bool read(const Json& json, std::vector<Element>& value) {
    if (!json.is_array()) return false;
    value.reserve(json.size());
    for (const Json& element : json) {
        if (!read(element, value.emplace_back())) return false;
    }
    return true;
}

template <typename Element>
bool read(const Json& json, std::map<std::string, Element>& value) {
    if (!json.is_object()) return false;
    for (const auto& [key, element] : json.items()) {
        if (!read(element, value[key])) return false;
    }
    return true;
}

/// A key that must be there. Keys that nobody asks for are ignored.
template <typename Field>
bool readKey(const Json& object, const char* key, Field& value) {
    if (!object.is_object()) return false;
    const auto found = object.find(key);
    return found != object.end() && read(*found, value);
}

/// A key that may be missing or null.
bool readKey(const Json& object, const char* key, std::optional<Date>& value) {
    if (!object.is_object()) return false;
    const auto found = object.find(key);
    return found == object.end() || found->is_null() || read(*found, value.emplace());
}

bool read(const Json& json, ProcessIdentity& value) {
    return readKey(json, "boot", value.boot) && readKey(json, "pid", value.pid) &&
           readKey(json, "start", value.start);
}

bool read(const Json& json, Attribution& value) {
    return readKey(json, "agent", value.agent) && readKey(json, "origin", value.origin) &&
           readKey(json, "confidence", value.confidence) && readKey(json, "reason", value.reason) &&
           readKey(json, "exitedAt", value.exitedAt);
}

bool read(const Json& json, SavedLineage& value) {
    return readKey(json, "identity", value.identity) && readKey(json, "attribution", value.attribution) &&
           readKey(json, "lastSeen", value.lastSeen);
}

bool read(const Json& json, HistoryRecord& value) {
    return readKey(json, "id", value.id) && readKey(json, "date", value.date) &&
           readKey(json, "title", value.title) && readKey(json, "detail", value.detail);
}

/// JSON has no word for a moment that is no number. The year 2001 keeps the file readable, and the entry
/// ages out at the next pruning.
Json written(Date date) {
    return std::isfinite(date.seconds) ? date.seconds : 0.0;
}

Json written(const ProcessIdentity& identity) {
    return {{"boot", identity.boot}, {"pid", identity.pid}, {"start", identity.start}};
}

Json written(const Attribution& attribution) {
    Json json{{"agent", attribution.agent},
              {"origin", written(attribution.origin)},
              {"confidence", rawValue(attribution.confidence)},
              {"reason", attribution.reason}};
    if (attribution.exitedAt) json["exitedAt"] = written(*attribution.exitedAt);
    return json;
}

} // namespace

std::string SessionArchive::encode() const {
    Json savedLineage = Json::array();
    for (const SavedLineage& entry : lineage) {
        savedLineage.push_back({{"identity", written(entry.identity)},
                                {"attribution", written(entry.attribution)},
                                {"lastSeen", written(entry.lastSeen)}});
    }
    Json savedActions = Json::array();
    for (const HistoryRecord& action : actions) {
        savedActions.push_back({{"id", action.id.text()},
                                {"date", written(action.date)},
                                {"title", action.title},
                                {"detail", action.detail}});
    }
    Json savedIgnored = Json::object();
    for (const auto& [finding, date] : ignored)
        savedIgnored[finding] = written(date);
    const Json archive{{"lineage", std::move(savedLineage)},
                       {"actions", std::move(savedActions)},
                       {"ignored", std::move(savedIgnored)},
                       {"roastChoices", Json(roastChoices)}};
    // Process and finding names are bytes from elsewhere: what is no UTF-8 is replaced, not refused.
    return archive.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<SessionArchive> SessionArchive::decode(std::string_view json) {
    if (isNestedTooDeep(json)) return std::nullopt;
    const Json tree = Json::parse(json, nullptr, /*allow_exceptions=*/false);
    std::optional<SessionArchive> archive(std::in_place);
    if (!readKey(tree, "lineage", archive->lineage) || !readKey(tree, "actions", archive->actions) ||
        !readKey(tree, "ignored", archive->ignored) ||
        !readKey(tree, "roastChoices", archive->roastChoices)) {
        archive.reset();
    }
    return archive;
}

} // namespace varnet
