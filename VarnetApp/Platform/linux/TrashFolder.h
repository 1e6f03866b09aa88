#pragma once

#include "VarnetApp/Platform/linux/FileDescriptor.h"
#include "VarnetCore/Storage/DiskIdentity.h"

#include <expected>
#include <string>

namespace varnet::platform {

/// A folder that is about to go to the trash, held by the folder it lies in, so that nothing planted in its
/// path leads to another one.
struct TrashedFolder {
    FileDescriptor parent; ///< the folder it lies in
    FileDescriptor top;    ///< the top of the mount it lies in
    std::string topPath;   ///< path of that; "/" for the root
    std::string path;      ///< canonical, absolute
    std::string name;      ///< the path's last component
    DiskIdentity identity;

    /// @return why it cannot be held
    static std::expected<TrashedFolder, std::string> hold(const std::string& path,
                                                          const DiskIdentity& identity);
};

/// One trash folder: what was thrown away in "files", and a note on each in "info".
class TrashFolder {
public:
    /// The user's own. Made when it is not there; may be a link.
    static std::expected<TrashFolder, std::string> ofHome(const std::string& path);
    /// The one at the top of a mount: ".Trash/UID" where an administrator has made a safe ".Trash", else
    /// ".Trash-UID", made when it is not there.
    static std::expected<TrashFolder, std::string> ofMount(const TrashedFolder& folder);

    /// What became of a folder that was to be moved here.
    enum class Refusal { otherVolume, failed };
    struct Failure {
        Refusal refusal;
        std::string text;
    };

    /// Moves a folder here by renaming it.
    /// @return where it is now
    std::expected<std::string, Failure> take(const TrashedFolder& folder) const;

private:
    TrashFolder(FileDescriptor files, FileDescriptor info, std::string path, std::string base)
        : files_(std::move(files)), info_(std::move(info)), path_(std::move(path)), base_(std::move(base)) {}

    static std::expected<TrashFolder, std::string> open(const FileDescriptor& trash, std::string path,
                                                        std::string base);
    std::string note(const std::string& path) const;

    FileDescriptor files_;
    FileDescriptor info_;
    std::string path_; ///< its own
    std::string base_; ///< what the notes' paths are relative to; empty: they are absolute
};

} // namespace varnet::platform
