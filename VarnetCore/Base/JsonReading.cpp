#include "VarnetCore/Base/JsonReading.h"

namespace varnet::JsonReading {

namespace {

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

} // namespace

Json parsed(std::string_view text) {
    if (isNestedTooDeep(text)) return Json(Json::value_t::discarded);
    return Json::parse(text, nullptr, /*allow_exceptions=*/false);
}

bool read(const Json& json, std::string& value) {
    const auto* text = json.get_ptr<const Json::string_t*>();
    if (text) value = *text;
    return text != nullptr;
}

bool read(const Json& json, bool& value) {
    const auto* flag = json.get_ptr<const Json::boolean_t*>();
    if (flag) value = *flag;
    return flag != nullptr;
}

bool read(const Json& json, double& value) {
    if (!json.is_number()) return false;
    value = json.get<double>();
    return std::isfinite(value);
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

Json written(Date date) {
    return std::isfinite(date.seconds) ? date.seconds : 0.0;
}

std::string dumped(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace varnet::JsonReading
