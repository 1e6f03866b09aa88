#pragma once

#include "VarnetCore/Disk/DiskMapNode.h"
#include "VarnetCore/Storage/StorageBucket.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace varnet {

/// A part of a project's tile.
struct TreemapPart {
    StorageBucket bucket = StorageBucket::files;
    std::string title; ///< a sentence of ours, English
    std::uint64_t bytes = 0;

    friend bool operator==(const TreemapPart&, const TreemapPart&) = default;
};

/// A tile: a node, and what is in it where that is known. With parts it is drawn as a head over a little map
/// of them, where it is large enough.
struct TreemapTile {
    DiskMapNode node; ///< `id` is the tile's key
    std::vector<TreemapPart> parts = {};

    friend bool operator==(const TreemapTile&, const TreemapTile&) = default;
};

/// The tiles of a map. A view model owns one and gives it to the view; `update` with the same tiles tells
/// nobody anything, and with others only what looks different is painted anew:
///
///     class PageModel : public ViewModel {
///         Q_PROPERTY(varnet::TreemapModel* map READ map CONSTANT)
///         …map_.update({{node, {{StorageBucket::git, "Git data", 512}}}});
///
///     Treemap {
///         label: Words.text("Projects")
///         model: page.map
///         onOpened: (key) => page.open(key)   // click, Enter, press action
///         onWentUp: page.goUp()               // Backspace
///     }
///
/// `Treemap.hoveredKey` is the tile below the pointer; set it from a list's row and the tile is lit.
/// Main thread only.
class TreemapModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("a page's model owns it")
    Q_PROPERTY(int count READ count NOTIFY changed)

public:
    using QObject::QObject;

    const std::vector<TreemapTile>& tiles() const noexcept { return tiles_; }
    int count() const noexcept { return static_cast<int>(tiles_.size()); }
    /// @param tiles largest first; two of one key count as one
    void update(std::vector<TreemapTile> tiles);

signals:
    void changed();

private:
    std::vector<TreemapTile> tiles_;
};

} // namespace varnet
