#include "VarnetCore/Disk/TemporaryPlace.h"

#include <unistd.h>

#include <array>

namespace varnet {

/// The user's own folder, which the system empties; it is on the data volume.
std::filesystem::path temporaryPlace() {
    std::array<char, 1024> path{};
    const std::size_t length = confstr(_CS_DARWIN_USER_TEMP_DIR, path.data(), path.size());
    return length > 1 && length <= path.size() ? path.data() : "/tmp";
}

} // namespace varnet
