#pragma once

#include <string>
#include <string_view>

namespace varnet {

/// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isValidUtf8(std::string_view bytes) noexcept;

/// The text with every byte that is not part of a character replaced by U+FFFD. Process names are bytes;
/// what the user reads and files hold is UTF-8.
std::string repairedUtf8(std::string_view bytes);

/// The text in its composed form (NFC): however an accent was typed, it comes out as one character. Bytes
/// that are not UTF-8 come back as they are.
std::string composedUtf8(std::string_view bytes);

/// The text without the difference of capital and small letters, for comparing; accents stay. Bytes that are
/// not UTF-8 come back as they are.
std::string caseFoldedUtf8(std::string_view bytes);

} // namespace varnet
