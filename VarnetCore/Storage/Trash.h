#pragma once

#include "VarnetCore/Storage/DiskIdentity.h"

#include <expected>
#include <optional>
#include <string>

namespace varnet {

/// The desktop's Trash: a move that the user can take back. Nothing is ever copied or deleted. Blocks its
/// thread, so for background work; may be used from several threads at once.
class Trash {
public:
    virtual ~Trash() = default;

    /// Moves one directory, as a whole or not at all.
    /// @param path canonical, absolute
    /// @param identity of the directory to be moved; anything else at the path stays where it is
    /// @return where it now is, when that is known; else the platform's words for what went wrong
    virtual std::expected<std::optional<std::string>, std::string>
    moveToTrash(const std::string& path, const DiskIdentity& identity) = 0;
};

} // namespace varnet
