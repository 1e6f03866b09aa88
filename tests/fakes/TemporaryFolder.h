#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace varnet {

/// A folder of the test's own, gone with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "varnet-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path_ = std::filesystem::canonical(pattern);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const noexcept { return path_; }
    std::string path(std::string_view below) const { return (path_ / below).string(); }

    /// Writes a file and the folders it needs. @return its path
    std::string write(std::string_view below, std::string_view bytes) const {
        const std::filesystem::path file = path_ / below;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file.string();
    }

    /// An executable file. @return its path
    std::string program(std::string_view below) const {
        const std::string file = write(below, "");
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return file;
    }

private:
    std::filesystem::path path_;
};

} // namespace varnet
