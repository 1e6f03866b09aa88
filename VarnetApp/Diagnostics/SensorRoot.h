#pragma once

#include <cstdlib>
#include <string>

namespace varnet::Diagnostics {

/// Where a diagnostic run reads the sensors: below the folder that the environment names for trying another
/// machine's files. Empty: on this machine. Processes are always this machine's.
inline std::string sensorRoot() {
    const char* const root = std::getenv("VARNET_KERNEL_ROOT"); // no other thread sets it
    return root != nullptr && *root != '\0' ? std::string(root) + "/sys" : std::string();
}

} // namespace varnet::Diagnostics
