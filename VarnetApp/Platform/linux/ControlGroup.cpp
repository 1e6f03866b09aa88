#include "VarnetApp/Platform/linux/ControlGroup.h"

#include <algorithm>

namespace varnet::platform {

namespace {

bool names(std::string_view controllers, std::string_view wanted) {
    while (!controllers.empty()) {
        const std::size_t comma = controllers.find(',');
        if (controllers.substr(0, comma) == wanted) {
            return true;
        }
        controllers.remove_prefix(comma == std::string_view::npos ? controllers.size() : comma + 1);
    }
    return false;
}

bool isUnit(std::string_view name) {
    return name.ends_with(".service") || name.ends_with(".scope") || name.ends_with(".slice");
}

} // namespace

std::optional<std::string> controlGroupPath(std::string_view text) {
    std::optional<std::string_view> manager;
    std::optional<std::string_view> unified;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);

        // hierarchy:controllers:path, and the path may hold colons of its own.
        const std::size_t first = line.find(':');
        const std::size_t second =
            first == std::string_view::npos ? std::string_view::npos : line.find(':', first + 1);
        if (second == std::string_view::npos) {
            continue;
        }
        const std::string_view controllers = line.substr(first + 1, second - first - 1);
        std::string_view path = line.substr(second + 1);
        if (path.ends_with(" (deleted)")) {
            path.remove_suffix(std::string_view(" (deleted)").size());
        }
        if (!path.starts_with('/')) {
            continue;
        }
        if (!manager && names(controllers, "name=systemd")) {
            manager = path;
        } else if (!unified && controllers.empty() && line.substr(0, first) == "0") {
            unified = path;
        }
    }
    // A bare root in the manager's hierarchy says only that nobody manages it.
    if (manager && (*manager != "/" || !unified)) {
        return std::string(*manager);
    }
    return unified ? std::optional<std::string>(*unified) : std::nullopt;
}

std::vector<std::string_view> controlGroupUnits(std::string_view path) {
    std::vector<std::string_view> units;
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        std::string_view name = path.substr(0, slash);
        path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
        if (name.starts_with('_')) {
            name.remove_prefix(1);
        }
        if (!name.empty()) {
            units.push_back(name);
        }
    }
    return units;
}

std::string_view innermostUnit(std::string_view path) {
    const std::vector<std::string_view> units = controlGroupUnits(path);
    const auto found = std::find_if(units.rbegin(), units.rend(), [](std::string_view name) {
        return name.ends_with(".service") || name.ends_with(".scope");
    });
    return found == units.rend() ? std::string_view() : *found;
}

bool isInUserSession(std::string_view path) {
    const std::vector<std::string_view> units = controlGroupUnits(path);
    const bool managed = std::any_of(units.begin(), units.end(), isUnit);
    return !managed || std::any_of(units.begin(), units.end(), [](std::string_view name) {
        return (name.starts_with("session-") && name.ends_with(".scope")) ||
               (name.starts_with("user@") && name.ends_with(".service"));
    });
}

} // namespace varnet::platform
