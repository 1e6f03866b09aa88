#include "VarnetCore/Base/Utf8.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace varnet {

namespace {

/// Bytes of the character that the bytes begins with; 0 when it begins with none.
std::size_t characterLength(std::string_view bytes) noexcept {
    utf8proc_int32_t codepoint = 0;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(bytes.data()),
                                         static_cast<utf8proc_ssize_t>(bytes.size()), &codepoint);
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

/// What the library makes of the text; text that it does not understand comes back as it is.
std::string mapped(std::string_view bytes, int options) {
    utf8proc_uint8_t* made = nullptr;
    const auto length = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(bytes.data()),
                                     static_cast<utf8proc_ssize_t>(bytes.size()), &made,
                                     static_cast<utf8proc_option_t>(options));
    if (length < 0) return std::string(bytes);
    std::string result(reinterpret_cast<const char*>(made), static_cast<std::size_t>(length));
    std::free(made); // NOLINT(cppcoreguidelines-no-malloc): the library's own way
    return result;
}

} // namespace

bool isValidUtf8(std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        if (static_cast<unsigned char>(bytes.front()) < 0x80) {
            bytes.remove_prefix(1);
            continue;
        }
        const std::size_t length = characterLength(bytes);
        if (length == 0) return false;
        bytes.remove_prefix(length);
    }
    return true;
}

std::string repairedUtf8(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        result += length > 0 ? bytes.substr(0, length) : std::string_view("\xEF\xBF\xBD");
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

std::string composedUtf8(std::string_view bytes) {
    const bool ascii =
        std::ranges::all_of(bytes, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
    return ascii ? std::string(bytes) : mapped(bytes, UTF8PROC_STABLE | UTF8PROC_COMPOSE);
}

std::string caseFoldedUtf8(std::string_view bytes) {
    // Most names are plain: a search through thousands of them must not wait for tables.
    std::string plain(bytes);
    bool isPlain = true;
    for (char& byte : plain) {
        isPlain = isPlain && static_cast<unsigned char>(byte) < 0x80;
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
    }
    if (isPlain) return plain;
    return mapped(bytes, UTF8PROC_STABLE | UTF8PROC_CASEFOLD | UTF8PROC_COMPOSE);
}

} // namespace varnet
