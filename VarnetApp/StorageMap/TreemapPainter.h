#pragma once

#include "VarnetApp/StorageMap/TreemapCells.h"

class QPainter;

namespace varnet {

struct Palette;

/// Paints one tile with what is written on it.
/// @param lit the pointer is on it, or on its row
void paintTile(QPainter& painter, const Palette& palette, const TreemapCell& cell, bool lit);

} // namespace varnet
