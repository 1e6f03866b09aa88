#include "VarnetCore/Disk/FurtherVolumes.h"

#include "VarnetCore/Disk/linux/MountTable.h"

namespace varnet {

std::vector<std::string> furtherVolumes() {
    return furtherRoots(readMountTable());
}

} // namespace varnet
