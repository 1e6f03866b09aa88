#pragma once

#include "VarnetCore/Hall/FlameArchive.h"

/// Collections of the prepared machine, made up: what pictures of the Hall of Flame show.
namespace varnet::PreparedCollection {

/// Two months in: twelve badges, two busy weeks, and bests with a gap among them.
FlameArchive started();
/// The first day, before anything was earned.
FlameArchive fresh();

} // namespace varnet::PreparedCollection
