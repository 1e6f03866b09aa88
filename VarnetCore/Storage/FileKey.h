#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

namespace varnet {

/// Which file on which device: tells hard links to one file from files.
struct FileKey {
    std::int32_t device = 0;
    std::uint64_t inode = 0;

    friend bool operator==(const FileKey&, const FileKey&) = default;
};

} // namespace varnet

template <>
struct std::hash<varnet::FileKey> {
    std::size_t operator()(const varnet::FileKey& key) const noexcept {
        return std::hash<std::uint64_t>()(key.inode ^ (static_cast<std::uint64_t>(key.device) << 40U));
    }
};
