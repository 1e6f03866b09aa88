#pragma once

namespace varnet {

class TreemapItem;

/// Makes maps known to screen readers as lists of their tiles: each is called by its title and size, told by
/// its subtitle, and can be pressed. Asked for more than once it does nothing.
void installTreemapAccess();

/// There are other tiles than before.
void announceTiles(TreemapItem& item);
/// The keyboard has moved to another tile.
void announceCurrent(TreemapItem& item);

} // namespace varnet
