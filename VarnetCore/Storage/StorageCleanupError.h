#pragma once

#include <string_view>

namespace varnet {

/// Why a folder stays where it is.
enum class StorageCleanupError { changed, unsupported, tracked, busy, incomplete, permission };

/// The sentence for the user.
std::string_view errorDescription(StorageCleanupError error) noexcept;

} // namespace varnet
