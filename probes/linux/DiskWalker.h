#pragma once

#include "probes/vn_probes.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

struct stat;

namespace varnet::probes {

/// The walk behind vn_disk_next. It goes from descriptor to descriptor, so that no path has to fit into a
/// call and nothing that is swapped above it leads it astray. Buffers only grow: a step allocates nothing.
class DiskWalker {
public:
    /// @param path not empty
    /// @param oneVolume whether directories on other devices than the start's are told but not entered
    /// @param budget descriptors held open at most, 2 or more: those of the start and of the deepest
    DiskWalker(const char* path, bool oneVolume, std::size_t budget = defaultBudget);
    DiskWalker(const DiskWalker&) = delete;
    DiskWalker& operator=(const DiskWalker&) = delete;
    ~DiskWalker();

    /// As vn_disk_next; throws bad_alloc.
    std::int32_t next(VNDiskEntry& entry);
    void skip() noexcept { enterNext_ = false; }

private:
    static constexpr std::size_t defaultBudget = 48;

    /// A directory that the walk is in. Only the deepest is ever being listed: its subdirectories' names are
    /// put aside until its list is through.
    struct Folder {
        int descriptor; ///< -1 while given up for deeper ones, or when it cannot be reached any more
        std::int32_t device;
        std::uint64_t inode;
        std::size_t pathLength; ///< of its own path within path_
        std::size_t firstName;  ///< where the names of its subdirectories begin in names_
        std::size_t nextName;   ///< the first of them that was not told yet
        bool listing;
    };

    bool tellStart(VNDiskEntry& entry);
    bool tellListed(VNDiskEntry& entry);
    bool tellSubfolder(VNDiskEntry& entry);
    void tellFolder(VNDiskEntry& entry, const struct stat& status);
    bool enter();
    void leave();
    void reach(std::size_t level, int below);
    int openWithRoom(int folder, const char* name);
    bool giveUpShallowest();
    bool enclosesItself(std::int32_t device, std::uint64_t inode) const noexcept;
    void setPath(std::size_t folderLength, const char* name);
    void fillError(VNDiskEntry& entry, int error) const noexcept;

    // Constant after construction.
    const bool oneVolume_;
    const std::size_t budget_;
    // The walk.
    bool started_ = false;
    bool enterNext_ = false;       ///< the entry told last is a directory to go into
    std::int32_t startDevice_ = 0; ///< of the start
    std::int32_t toldDevice_ = 0;  ///< of the directory told last
    std::uint64_t toldInode_ = 0;  ///< of the directory told last
    std::string path_;             ///< of the entry told last
    std::vector<Folder> folders_;  ///< the start first
    std::size_t firstOpen_ = 1;    ///< folders_[1] up to here have no descriptor
    std::vector<char> names_;      ///< NUL-terminated, of all folders_, the deepest's last
    std::vector<char> list_;       ///< what the kernel gave of the list being read
    std::size_t listAt_ = 0;
    std::size_t listEnd_ = 0;
};

} // namespace varnet::probes
