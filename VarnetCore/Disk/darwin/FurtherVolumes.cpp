#include "VarnetCore/Disk/FurtherVolumes.h"

namespace varnet {

/// None: the data volume holds all of it, and what else is mounted was plugged in or comes over the network.
std::vector<std::string> furtherVolumes() {
    return {};
}

} // namespace varnet
