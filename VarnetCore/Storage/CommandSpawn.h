#pragma once

#include "VarnetCore/Storage/BoundedCommand.h"

#include <sys/types.h>

namespace varnet {

/// Starts the program from the calling thread, whose confinement it inherits: in a session of its own, with
/// no signal blocked or ignored and no descriptor but its first three.
/// @param nullDevice descriptor for its input and its errors
/// @return its pid, or -1
pid_t spawnCommand(const BoundedCommand& command, int nullDevice);

} // namespace varnet
