#pragma once

#include "VarnetCore/Flame/FlameExpression.h"

#include <QImage>

namespace varnet {

/// The flame's face for a tray, on a transparent ground. With an update at hand a disc with a downward arrow
/// covers its lower right corner: part of the picture, since many trays show nothing laid upon an icon.
/// @param size device pixels of a side, 8 to 512
QImage trayFace(FlameExpression expression, int size, bool updateAvailable);

} // namespace varnet
