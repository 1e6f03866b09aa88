#pragma once

#include <string>
#include <string_view>

namespace varnet {

/// SHA-256 of the bytes as 64 small hexadecimal digits.
std::string sha256(std::string_view bytes);

} // namespace varnet
