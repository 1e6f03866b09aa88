#pragma once

#include "VarnetCore/Hall/FlameArchive.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

/// The file that holds a collection. Private to its user, and always whole.
namespace varnet::CollectionFile {

/// The file's name in the data root.
inline constexpr const char* name = "flame-collection.json";

/// Bytes from which on a file is not looked into: dozens of times what the fullest collection takes.
inline constexpr std::size_t tooLarge = 2'000'000;

/// Empty when the file cannot be understood: too large, damaged, or of another schema.
std::optional<FlameArchive> read(const std::filesystem::path& file);

/// Makes the folders that are missing. @return empty on success, else what went wrong
std::optional<std::string> write(const std::filesystem::path& file, const FlameArchive& archive);

/// Writes another collection over the file, which is first copied beside itself.
/// @return empty on success, else what went wrong; the file is then as it was
std::optional<std::string> replace(const std::filesystem::path& file, const FlameArchive& archive);

} // namespace varnet::CollectionFile
