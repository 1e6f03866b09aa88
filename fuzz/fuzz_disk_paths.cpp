// Names of folders found on disks, and the system's own list of them: excluded places are absolute and never
// lead upward, a part of a project is the same part however its path is written.

#include "VarnetCore/Disk/DiskVolumes.h"
#include "VarnetCore/Storage/StoragePaths.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto excluded = systemExclusions(text);
    require(excluded.contains("/dev") && excluded.contains("/Volumes"));
    for (const std::string& place : excluded) {
        require(place.starts_with('/') && place != "/");
        require((place + '/').find("/../") == std::string::npos);
        require(place.find_first_of("\n\t ") == std::string::npos);
    }

    std::string doubled;
    for (const char byte : text)
        doubled.append(byte == '/' ? 2 : 1, byte);
    const StorageBucket bucket = StoragePaths::bucket(text);
    require(StoragePaths::bucket(doubled) == bucket && StoragePaths::bucket(doubled + "/") == bucket);
    const std::string path(text);
    require(StoragePaths::bucket(path + "/.git/config") == StorageBucket::git);
    if (bucket != StorageBucket::git)
        require(StoragePaths::bucket(path + "/node_modules/x") == StorageBucket::dependencies);

    require(StoragePaths::contains(path, path) && StoragePaths::contains(path + "/x", path));
    require(!StoragePaths::contains(path + "x", path + "/"));
    require(path.empty() || !StoragePaths::contains("/" + path + "x", "/" + path) || path.ends_with('/'));
    const std::string shown = displayPath(path);
    require(shown.size() <= path.size() || shown == "/");
    return 0;
}
