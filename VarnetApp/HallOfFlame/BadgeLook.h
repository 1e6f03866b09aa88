#pragma once

#include <QString>

namespace varnet {

struct FlameBadge;

/// How a badge is drawn.
namespace BadgeLook {

/// Name of the icon that stands for the badge's symbol.
QString icon(const FlameBadge& badge);
/// Name of the theme's colour for shapes of the badge's tier, and for words.
QString tone(const FlameBadge& badge);
QString ink(const FlameBadge& badge);

} // namespace BadgeLook
} // namespace varnet
