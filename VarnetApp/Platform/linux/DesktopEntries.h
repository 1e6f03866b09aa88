#pragma once

#include "VarnetApp/Platform/linux/DesktopEntry.h"
#include "VarnetApp/Platform/linux/DesktopPlaces.h"

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace varnet::platform {

/// An application that is installed.
struct InstalledApplication {
    std::string id;   ///< "org.kde.konsole": the file's name below its folder, slashes as dashes
    std::string path; ///< of the .desktop file, absolute
    std::string name; ///< display name, never empty
};

/// The installed applications, by id and by the program they run. Main thread only.
class DesktopEntries {
public:
    /// Reads nothing yet.
    explicit DesktopEntries(DesktopPlaces places);

    /// Brings the index up to date: some `stat` calls, and a new reading when a folder has changed.
    /// What the look-ups returned before is invalid after.
    void refresh();

    /// By id, else by the Flatpak's id or the Snap's "NAME_PROGRAM". Null: not installed.
    const InstalledApplication* byID(std::string_view id) const;

    /// The application that an executable belongs to: the one whose command line leads to this very file,
    /// else the one whose program lies in the same folder of its own under a kindred name (a start script
    /// beside the real thing), else the one whose program has the same name. Interpreters, entries for a
    /// terminal and entries without a place in the menu stand for no program. Null: none.
    /// @param path absolute
    const InstalledApplication* byExecutable(std::string_view path) const;

private:
    struct FolderState {
        std::string path;
        bool exists = false;
        dev_t device = 0;
        ino_t inode = 0;
        std::int64_t changed = 0; ///< nanoseconds since 1970

        friend bool operator==(const FolderState&, const FolderState&) = default;
    };
    struct Program;
    struct NameHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept {
            return std::hash<std::string_view>()(text);
        }
    };
    template <class Value>
    using ByName = std::unordered_map<std::string, Value, NameHash, std::equal_to<>>;
    using Names = std::unordered_set<std::string, NameHash, std::equal_to<>>;
    struct InFolder {
        std::size_t application;
        std::string program;
    };

    static FolderState stateOf(const std::string& path);
    void readFolder(const std::string& folder, const std::string& prefix, int depth,
                    std::vector<Program>& programs, Names& masked);
    void readEntry(const std::string& path, std::string id, std::vector<Program>& programs, Names& masked);
    void indexPrograms(std::vector<Program>& programs);
    std::string located(const std::string& program) const;
    const InstalledApplication* at(const ByName<std::size_t>& index, std::string_view key) const;

    // Constant after construction.
    const DesktopPlaces places_;
    const std::vector<std::string> localeTags_;

    // One reading.
    std::vector<FolderState> folders_; ///< all that were looked into, those that were missing included
    std::vector<InstalledApplication> applications_;
    ByName<std::size_t> ids_;
    ByName<std::size_t> aliases_;
    ByName<std::size_t> paths_;
    ByName<std::size_t> names_;
    ByName<InFolder> programFolders_;
    std::size_t filesSeen_ = 0;
};

} // namespace varnet::platform
