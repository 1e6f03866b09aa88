#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

/// Private files that are either whole or as they were: every file this program keeps is written here.
namespace varnet::AtomicFile {

/// Makes a folder with those above it; the folder itself is for its user alone (0700), also when it was
/// there before.
/// @return empty on success, else the system's words for what went wrong
std::optional<std::string> makePrivateFolder(const std::filesystem::path& folder);

/// Replaces a file's contents by way of a temporary file beside it that is flushed to the disk and renamed.
/// The file ends with mode 0600; on failure it stays as it was and nothing is left behind.
/// @return empty on success, else the system's words for what went wrong
std::optional<std::string> write(const std::filesystem::path& file, std::string_view bytes);

/// Copies a file for its user alone (0600). On failure no copy is left behind.
/// @param to a name that is free
/// @return empty on success, else the system's words for what went wrong
std::optional<std::string> copy(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace varnet::AtomicFile
