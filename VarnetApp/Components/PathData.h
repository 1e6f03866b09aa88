#pragma once

#include <QPainterPath>

#include <string_view>

namespace varnet {

/// Reads a drawn outline from text: the absolute commands M, L, C, Q, A and Z, numbers apart by blanks or
/// commas. A command's numbers may repeat without its letter; after M they are lines. Filling is odd-even.
/// Text that is too long, cut off, not finite or not understood gives an empty path, never half of one.
QPainterPath pathFromData(std::string_view data);

} // namespace varnet
