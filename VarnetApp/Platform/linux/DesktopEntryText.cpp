#include "VarnetApp/Platform/linux/DesktopEntryText.h"

#include <cstddef>

namespace varnet::platform {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

} // namespace

std::string_view trimmedDesktopText(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

void forEachDesktopKey(std::string_view text,
                       const std::function<void(std::string_view key, std::string_view value)>& take) {
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.remove_prefix(3);
    }
    bool inside = false;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = trimmedDesktopText(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        if (line.front() == '[') {
            if (inside) {
                break; // actions and other groups have names and commands of their own
            }
            inside = line == "[Desktop Entry]";
            continue;
        }
        const std::size_t equals = line.find('=');
        if (inside && equals != std::string_view::npos) {
            take(trimmedDesktopText(line.substr(0, equals)), trimmedDesktopText(line.substr(equals + 1)));
        }
    }
}

std::string unescapedDesktopText(std::string_view value) {
    std::string result;
    result.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            result.push_back(value[i]);
            continue;
        }
        switch (const char next = value[++i]) {
        case 's':
            result.push_back(' ');
            break;
        case 'n':
            result.push_back('\n');
            break;
        case 't':
            result.push_back('\t');
            break;
        case 'r':
            result.push_back('\r');
            break;
        case '\\':
            result.push_back('\\');
            break;
        default: // not ours to resolve: a command line has escapes of its own
            result.push_back('\\');
            result.push_back(next);
        }
    }
    return result;
}

std::string escapedDesktopText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\\':
            result += "\\\\";
            break;
        default:
            result.push_back(c);
        }
    }
    return result;
}

bool isTrueInDesktopEntry(std::string_view value) {
    return value == "true" || value == "1";
}

} // namespace varnet::platform
