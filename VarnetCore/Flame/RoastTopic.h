#pragma once

#include "VarnetCore/Flame/FlameExpression.h"

#include <array>
#include <string_view>

namespace varnet {

/// What a line can be about.
struct RoastTopic {
    std::string_view name;
    int severity; ///< how urgent; -1: nothing is known
    std::string_view bank;
    MascotMood mood;
};

inline constexpr std::array<RoastTopic, 14> roastTopics{{
    {"unknown", -1, "unknown", MascotMood::unknown},
    {"thermal", 5, "thermal", MascotMood::warm},
    {"takeoff", 4, "takeoff", MascotMood::takeoff},
    {"vacuum", 3, "vacuum", MascotMood::busy},
    {"warm", 2, "thermal", MascotMood::warm},
    {"forgotten", 1, "forgotten", MascotMood::busy},
    {"duplicate", 1, "duplicate", MascotMood::busy},
    {"development", 1, "busy", MascotMood::busy},
    {"workload", 1, "busy", MascotMood::busy},
    {"app", 1, "app", MascotMood::busy},
    {"figma", 1, "app", MascotMood::busy},
    {"system", 1, "app", MascotMood::busy},
    {"quiet", 0, "calm", MascotMood::calm},
    {"fanless", 0, "calm", MascotMood::calm},
}};

/// A topic that is not known counts as a calm piece of work.
const RoastTopic& roastTopic(std::string_view name) noexcept;

} // namespace varnet
