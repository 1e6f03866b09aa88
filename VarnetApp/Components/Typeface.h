#pragma once

#include <QFont>

namespace varnet {

/// The program's own face, or the desktop's where that is not installed. Unhinted, so that words keep their
/// shape at every scale.
/// @param spacing pixels between letters beyond what the face asks for
QFont typeface(int pixels, QFont::Weight weight, double spacing = 0);

} // namespace varnet
