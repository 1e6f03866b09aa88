#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace varnet::platform {

/// Hands out the keys of the main group of a .desktop file with their values as written, in order; a key may
/// come more than once. Any text will do.
void forEachDesktopKey(std::string_view text,
                       const std::function<void(std::string_view key, std::string_view value)>& take);

/// Without the blanks at its ends.
std::string_view trimmedDesktopText(std::string_view text);

/// A text value with its escapes resolved. Those that are not of this format stay: command lines have their
/// own.
std::string unescapedDesktopText(std::string_view value);
/// A text as it is written into a value.
std::string escapedDesktopText(std::string_view text);

bool isTrueInDesktopEntry(std::string_view value);

} // namespace varnet::platform
