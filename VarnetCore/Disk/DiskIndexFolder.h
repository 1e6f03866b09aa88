#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace varnet {

/// A temporary folder for one index, private to its user, gone with the object. A lock on it tells living
/// owners from dead ones.
class DiskIndexFolder {
public:
    /// Makes "varnet-disk-map-" and a new identifier below a folder for temporary things.
    static std::optional<DiskIndexFolder> make(const std::filesystem::path& temporary);

    DiskIndexFolder(DiskIndexFolder&& other) noexcept;
    DiskIndexFolder& operator=(DiskIndexFolder&& other) noexcept;
    ~DiskIndexFolder() { remove(); }

    const std::filesystem::path& path() const noexcept { return path_; }
    /// Removes it with all that is in it; done already, nothing happens.
    void remove() noexcept;

    /// Removes what a program of this user that has died left below a folder. Anything that is in use, of
    /// somebody else or no folder stays.
    static void removeStale(const std::filesystem::path& temporary) noexcept;

    /// Where temporary things lie: what the environment says, else the machine's own place for them.
    static std::filesystem::path temporary();

private:
    DiskIndexFolder(std::filesystem::path path, int lock) : path_(std::move(path)), lock_(lock) {}

    std::filesystem::path path_; ///< empty once removed
    int lock_ = -1;              ///< descriptor of the folder, locked
};

} // namespace varnet
