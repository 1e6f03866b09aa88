#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace varnet::platform {

/// Reads a whole regular file, following symlinks.
/// @param limit bytes; a longer file is refused whole, never cut
/// @return empty when it cannot be read, is longer than the limit or is no regular file (a pipe in its place
///         must not make the reader wait)
std::optional<std::string> readBoundedFile(const std::string& path, std::size_t limit);

} // namespace varnet::platform
