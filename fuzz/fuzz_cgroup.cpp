#include "VarnetApp/Platform/linux/ApplicationUnit.h"
#include "VarnetApp/Platform/linux/ControlGroup.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

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
        if (unit.empty() || unit.data() < path->data() ||
            unit.data() + unit.size() > path->data() + path->size()) {
            std::abort();
        }
        for (const auto& id : applicationIDs(unit)) {
            if (id.empty() || id.size() > unit.size() + 1) {
                std::abort();
            }
        }
    }
    return 0;
}
