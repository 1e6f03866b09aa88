#pragma once

#include <memory>
#include <string>
#include <vector>

namespace varnet::platform {

/// Hands addresses and files to the programs that the user has chosen for them. Main thread only; nothing
/// waits for those programs.
class FileOpening {
public:
    virtual ~FileOpening() = default;

    /// @param url of the web (`http:`, `https:`) or of mail (`mailto:`), properly encoded; others are refused
    /// @return false when nobody could be asked
    virtual bool openUrl(const std::string& url) = 0;

    /// Shows files or folders in their folders; those that are not there are left out.
    /// @param paths absolute
    /// @return false when none is there or nobody could be asked
    virtual bool revealFiles(const std::vector<std::string>& paths) = 0;
    bool revealFile(const std::string& path) { return revealFiles({path}); }

    /// Opens an application by one of its names: its desktop identifier, or that in other systems' menus.
    /// @return false when none of them is installed
    virtual bool openApplication(const std::vector<std::string>& names) = 0;
};

/// Those of this session. The application object must exist.
std::unique_ptr<FileOpening> makeFileOpening();

} // namespace varnet::platform
