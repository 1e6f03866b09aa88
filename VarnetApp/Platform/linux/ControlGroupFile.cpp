#include "VarnetApp/Platform/linux/ControlGroupFile.h"

#include "VarnetCore/Base/SmallFile.h"

#include <cstddef>

namespace varnet::platform {

namespace {
// A path has at most 4,096 bytes and a machine about a dozen hierarchies.
constexpr std::size_t longestText = std::size_t{256} << 10;
} // namespace

std::string readControlGroupFile(std::int32_t pid, const std::string& root) {
    return readSmallFile(root + "/" + std::to_string(pid) + "/cgroup", longestText).value_or(std::string());
}

} // namespace varnet::platform
