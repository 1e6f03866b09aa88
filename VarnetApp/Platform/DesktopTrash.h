#pragma once

#include "VarnetCore/Storage/Trash.h"

#include <memory>

namespace varnet::platform {

/// The Trash of this user, as the environment is now.
std::unique_ptr<Trash> makeTrash();

} // namespace varnet::platform
