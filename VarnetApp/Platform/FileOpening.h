#pragma once

#include <memory>
#include <string>

namespace varnet::platform {

/// Hands addresses and files to the programs that the user has chosen for them. Main thread only; nothing
/// waits for those programs.
class FileOpening {
public:
    virtual ~FileOpening() = default;

    /// @param url of the web (`http:`, `https:`) or of mail (`mailto:`), properly encoded; others are refused
    /// @return false when nobody could be asked
    virtual bool openUrl(const std::string& url) = 0;

    /// Shows a file or folder in its folder.
    /// @param path absolute
    /// @return false when there is no such file or nobody could be asked
    virtual bool revealFile(const std::string& path) = 0;
};

/// Those of this session. The application object must exist.
std::unique_ptr<FileOpening> makeFileOpening();

} // namespace varnet::platform
