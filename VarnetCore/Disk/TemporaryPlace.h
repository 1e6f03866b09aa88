#pragma once

#include <filesystem>

namespace varnet {

/// Where this machine keeps large temporary things when the environment does not say.
std::filesystem::path temporaryPlace();

} // namespace varnet
