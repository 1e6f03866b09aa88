#include "VarnetApp/Platform/linux/ApplicationUnit.h"
#include "VarnetApp/Platform/linux/ControlGroup.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/Require.h"

/// From the text of a `cgroup` file down to the ids that its units may stand for.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace varnet::platform;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    applicationIDs(text);
    const auto path = controlGroupPath(text);
    if (!path) {
        return 0;
    }
    isInUserSession(*path);
    innermostUnit(*path);
    for (const std::string_view unit : controlGroupUnits(*path)) {
        // The catalogue takes a unit's place in the path from where its name lies in memory.
        varnet::require(!unit.empty() && unit.data() >= path->data());
        varnet::require(unit.data() + unit.size() <= path->data() + path->size());
        for (const auto& id : applicationIDs(unit)) {
            varnet::require(!id.empty() && id.size() <= unit.size() + 1);
        }
    }
    return 0;
}
