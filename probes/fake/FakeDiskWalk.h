#pragma once

#include "probes/DiskWalk.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace varnet {

/// One entry of a pretended tree.
struct FakeDiskEntry {
    std::optional<std::string> path; ///< empty: an entry without a path
    std::uint32_t kind = VN_DISK_FILE;
    std::uint64_t allocated = 0;
    std::uint64_t logical = 0;
    std::uint64_t inode = 1;
    std::uint64_t links = 1;
    std::int64_t modified = 0;
    std::int32_t device = 1;
    std::uint32_t owner = 501;
};

/// A pretended tree, its entries in the order in which they are told, the start first.
struct FakeTree {
    std::vector<FakeDiskEntry> entries;
    bool failsAtEnd = false;                 ///< the walk as a whole fails where it should end
    std::function<void(std::size_t)> onStep; ///< called with the index of each entry before it is told
};

class FakeDiskWalk final : public DiskWalk {
public:
    FakeDiskWalk(FakeTree tree, DiskScope scope) : tree_(std::move(tree)), scope_(scope) {}

    std::int32_t next(VNDiskEntry& entry) override;
    void skip() override;

private:
    const FakeTree tree_;
    const DiskScope scope_;
    std::size_t at_ = 0; ///< entry to be told next
};

} // namespace varnet
