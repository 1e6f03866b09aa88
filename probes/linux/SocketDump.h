#pragma once

#include "probes/linux/ParseSockets.h"

#include <vector>

namespace varnet::probes {

/// Appends every listening TCP socket of this network namespace, IPv4 and IPv6, from the kernel's socket
/// monitoring: a hundred times cheaper than its text tables.
/// @return false when the kernel offers no such thing or refuses
bool dumpListeners(std::vector<Listener>& listeners);

} // namespace varnet::probes
