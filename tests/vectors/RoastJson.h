#pragma once

#include "VarnetCore/Flame/Roast.h"
#include "tests/vectors/RecordJson.h"

namespace varnet::vectors {

template <>
inline constexpr auto lastCase<MascotMood> = MascotMood::relieved;
VARNET_RECORD(Roast, id, headline, explanation, observations, mood, topic, characterTopic)

} // namespace varnet::vectors
