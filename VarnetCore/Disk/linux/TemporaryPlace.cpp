#include "VarnetCore/Disk/TemporaryPlace.h"

#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace varnet {

/// /tmp; where that is kept in memory, /var/tmp, since the map of a whole disk would fill it.
std::filesystem::path temporaryPlace() {
    struct statfs volume{};
    if (statfs("/tmp", &volume) == 0 && volume.f_type != TMPFS_MAGIC) return "/tmp";
    return access("/var/tmp", W_OK | X_OK) == 0 ? "/var/tmp" : "/tmp";
}

} // namespace varnet
