#include "VarnetApp/Platform/linux/ApplicationUnit.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace varnet::platform {

namespace {

// The manager's own limit; anything longer is none of its names.
constexpr std::size_t longestUnitName = 255;

std::optional<unsigned> hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return static_cast<unsigned>(c - '0');
    }
    if (c >= 'a' && c <= 'f') {
        return static_cast<unsigned>(c - 'a') + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return static_cast<unsigned>(c - 'A') + 10;
    }
    return std::nullopt;
}

bool removeSuffix(std::string_view& text, std::string_view suffix) {
    if (!text.ends_with(suffix)) {
        return false;
    }
    text.remove_suffix(suffix.size());
    return true;
}

constexpr std::size_t uuidSize = 36;

bool endsInUuid(std::string_view text) {
    constexpr std::array<std::size_t, 4> dashes = {8, 13, 18, 23};
    if (text.size() < uuidSize) {
        return false;
    }
    text.remove_prefix(text.size() - uuidSize);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool dash = std::find(dashes.begin(), dashes.end(), i) != dashes.end();
        if (dash ? text[i] != '-' : !hexDigit(text[i])) {
            return false;
        }
    }
    return true;
}

void addID(std::vector<std::string>& ids, std::string_view escaped) {
    if (!escaped.empty()) {
        ids.push_back(unescapeUnitName(escaped));
    }
}

/// With the launcher's word off and with it on.
void addWithAndWithoutLauncher(std::vector<std::string>& ids, std::string_view body) {
    const std::size_t dash = body.find('-');
    if (dash != std::string_view::npos) {
        addID(ids, body.substr(dash + 1));
    }
    addID(ids, body);
}

void addWithoutRandomPart(std::vector<std::string>& ids, std::string_view body) {
    if (endsInUuid(body) && body.size() > uuidSize && body[body.size() - uuidSize - 1] == '-') {
        addWithAndWithoutLauncher(ids, body.substr(0, body.size() - uuidSize - 1));
    } else if (const std::size_t dash = body.rfind('-'); dash != std::string_view::npos) {
        addWithAndWithoutLauncher(ids, body.substr(0, dash));
    }
}

std::vector<std::string> launcherIDs(std::string_view unit) {
    std::vector<std::string> ids;
    std::string_view body = unit.substr(std::string_view("app-").size());
    const bool scope = removeSuffix(body, ".scope");
    if (!scope && !removeSuffix(body, ".service") && !removeSuffix(body, ".slice")) {
        return ids;
    }
    if (const std::size_t at = body.find('@'); at != std::string_view::npos) {
        addWithAndWithoutLauncher(ids, body.substr(0, at));
        return ids;
    }
    // A scope is made once, so it always has a random part; a service or slice may do without.
    if (!scope) {
        addWithAndWithoutLauncher(ids, body);
    }
    addWithoutRandomPart(ids, body);
    return ids;
}

/// Started by a message bus: the unit holds the connection's number and the bus name, which is the id.
std::vector<std::string> busIDs(std::string_view unit) {
    std::vector<std::string> ids;
    std::string_view body = unit.substr(std::string_view("dbus-:").size());
    const std::size_t dash = body.find('-');
    const std::size_t at = body.find('@');
    if (removeSuffix(body, ".service") && dash != std::string_view::npos && at != std::string_view::npos &&
        dash < at) {
        addID(ids, body.substr(dash + 1, at - dash - 1));
    }
    return ids;
}

std::vector<std::string> snapIDs(std::string_view unit) {
    std::vector<std::string> ids;
    std::string_view body = unit.substr(std::string_view("snap.").size());
    if (!removeSuffix(body, ".scope") || !endsInUuid(body)) {
        return ids;
    }
    body.remove_suffix(uuidSize);
    if (!removeSuffix(body, "-") && !removeSuffix(body, ".")) {
        return ids;
    }
    const std::size_t dot = body.find('.');
    if (dot != std::string_view::npos && dot > 0 && dot + 1 < body.size()) {
        ids.push_back(unescapeUnitName(body.substr(0, dot)) + "_" + unescapeUnitName(body.substr(dot + 1)));
    }
    return ids;
}

} // namespace

std::string unescapeUnitName(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i).starts_with("\\x") && i + 3 < text.size()) {
            const auto high = hexDigit(text[i + 2]);
            const auto low = hexDigit(text[i + 3]);
            if (high && low) {
                result.push_back(static_cast<char>(static_cast<unsigned char>(*high * 16 + *low)));
                i += 3;
                continue;
            }
        }
        result.push_back(text[i]);
    }
    return result;
}

std::vector<std::string> applicationIDs(std::string_view unit) {
    if (unit.size() > longestUnitName) {
        return {};
    }
    if (unit.starts_with("app-")) {
        return launcherIDs(unit);
    }
    if (unit.starts_with("dbus-:")) {
        return busIDs(unit);
    }
    if (unit.starts_with("snap.")) {
        return snapIDs(unit);
    }
    return {};
}

} // namespace varnet::platform
