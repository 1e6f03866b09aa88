#include "VarnetCore/Flame/RoastTopic.h"

#include <algorithm>

namespace varnet {

const RoastTopic& roastTopic(std::string_view name) noexcept {
    static constexpr RoastTopic other{"", 1, "calm", MascotMood::busy};
    const auto found = std::ranges::find(roastTopics, name, &RoastTopic::name);
    return found == roastTopics.end() ? other : *found;
}

} // namespace varnet
