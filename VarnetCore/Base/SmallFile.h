#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace varnet {

/// Reads a whole text file. Empty when there is none, when it is no regular file (a pipe or device could
/// block or act), when it is larger than the limit, or when it is not valid UTF-8. Never blocks on a pipe.
/// @param limit bytes
std::optional<std::string> readSmallTextFile(const std::string& path, std::size_t limit);

} // namespace varnet
