#pragma once

#include <string_view>

namespace varnet {

/// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isValidUtf8(std::string_view bytes) noexcept;

} // namespace varnet
