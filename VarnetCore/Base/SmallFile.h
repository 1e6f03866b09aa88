#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace varnet {

/// Whether there is something of this name, or it cannot be ruled out.
bool mayExist(const std::filesystem::path& file) noexcept;

/// Reads a whole regular file, the kernel's own among them, following symbolic links. Never waits: a pipe or
/// device in its place is refused before it is opened.
/// @param limit bytes; a longer file is refused whole, never cut
/// @return empty when there is none or it cannot be read whole
std::optional<std::string> readSmallFile(const std::string& path, std::size_t limit);

/// The same for text: also empty when the bytes are not valid UTF-8.
std::optional<std::string> readSmallTextFile(const std::string& path, std::size_t limit);

} // namespace varnet
