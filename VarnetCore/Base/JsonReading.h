#pragma once

#include "VarnetCore/Base/Date.h"
#include "VarnetCore/Base/Uuid.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <concepts>
#include <cstddef>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Reading records from JSON that may hold anything. Each read answers whether the value has the right type
/// and fits, and fills the field only then. A record brings a `read` of its own, declared in namespace
/// varnet.
namespace varnet::JsonReading {

using Json = nlohmann::json;

/// Deeper than any file of ours.
inline constexpr std::size_t deepestNesting = 128;

/// The tree of a text; discarded when it is no JSON or nested deeper than ours ever are.
Json parsed(std::string_view text);

bool read(const Json& json, std::string& value);
bool read(const Json& json, bool& value);
/// A number that is finite: JSON has no other.
bool read(const Json& json, double& value);
bool read(const Json& json, Date& value);
bool read(const Json& json, Uuid& value);

template <std::integral Integer>
    requires(!std::same_as<Integer, bool>)
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

template <typename Element>
bool read(const Json& json, std::vector<Element>& value) {
    if (!json.is_array()) return false;
    value.reserve(json.size());
    for (const Json& element : json)
        if (!read(element, value.emplace_back())) return false;
    return true;
}

/// An array in any order; an element that comes twice counts once.
template <typename Element>
bool read(const Json& json, std::set<Element>& value) {
    if (!json.is_array()) return false;
    for (const Json& element : json) {
        Element one{};
        if (!read(element, one)) return false;
        value.insert(std::move(one));
    }
    return true;
}

template <typename Element>
bool read(const Json& json, std::map<std::string, Element>& value) {
    if (!json.is_object()) return false;
    for (const auto& [key, element] : json.items())
        if (!read(element, value[key])) return false;
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
template <typename Field>
bool readKey(const Json& object, const char* key, std::optional<Field>& value) {
    if (!object.is_object()) return false;
    const auto found = object.find(key);
    return found == object.end() || found->is_null() || read(*found, value.emplace());
}

/// JSON has no word for a moment that is no number. The year 2001 keeps the file readable, and the entry
/// ages out at the next pruning.
Json written(Date date);

/// Compact text. Names are bytes from elsewhere: what is no UTF-8 is replaced, not refused.
std::string dumped(const Json& json);

} // namespace varnet::JsonReading
