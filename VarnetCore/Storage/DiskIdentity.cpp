#include "VarnetCore/Storage/DiskIdentity.h"

#include <sys/stat.h>

namespace varnet {

std::optional<DiskIdentity> DiskIdentity::read(const std::string& path) {
    struct stat status{};
    if (path.find('\0') != std::string::npos || ::lstat(path.c_str(), &status) != 0) return std::nullopt;
    if (!S_ISDIR(status.st_mode)) return std::nullopt;
    // The kernel's device numbers have 32 bits.
    return DiskIdentity{static_cast<std::int32_t>(static_cast<std::uint32_t>(status.st_dev)), status.st_ino,
                        status.st_uid};
}

} // namespace varnet
