#pragma once

#include "VarnetApp/Localization/Figures.h"
#include "VarnetApp/StorageMap/TreemapModel.h"

#include <QRect>
#include <QString>

#include <cstddef>
#include <functional>
#include <vector>

namespace varnet {

/// How much is written on a tile.
enum class TileWords {
    none,        ///< too small: a tooltip tells it
    name,        ///< its name, small
    nameAndSize, ///< its name, and its size below
    full,        ///< an icon, the name, and as much of the rest as there is room for
    head         ///< name, size and subtitle over a little map of its parts
};

/// What is written on a tile of this size, and where; lengths in logical pixels from its top left corner.
struct TileLabel {
    static constexpr int headHeight = 48;
    /// A head narrower than this has the size on its second line.
    static constexpr int wideHead = 148;

    TileWords words = TileWords::none;
    int subtitleLines = 0;
    bool largeFigure = false;

    /// @param partial not all of it was measured, which is said wherever there is room
    static TileLabel of(QSize size, bool hasParts, bool partial) noexcept;

    friend bool operator==(const TileLabel&, const TileLabel&) = default;
};

/// A part of a project's tile as it is drawn. Texts that find no room are empty.
struct TreemapPartCell {
    QRect frame;
    StorageBucket bucket = StorageBucket::files;
    QString title;
    QString figure;

    friend bool operator==(const TreemapPartCell&, const TreemapPartCell&) = default;
};

/// A tile as it is drawn: whole pixels and finished texts. Two that are equal look the same.
struct TreemapCell {
    QRect frame; ///< empty: nothing is drawn
    TileLabel label;
    QString title; ///< this and the following are empty where they are not written
    QString subtitle;
    QString figure;
    QString icon;
    MapTone tone = MapTone::gray;
    bool partial = false;
    std::vector<TreemapPartCell> parts;

    friend bool operator==(const TreemapCell&, const TreemapCell&) = default;
};

/// How texts become words on screen.
struct TreemapLanguage {
    Figures figures;
    std::function<QString(const QString&)> text;

    QString title(const DiskMapNode& node) const;
    QString subtitle(const DiskMapNode& node) const;
    QString size(const DiskMapNode& node) const { return figures.diskSize(node.bytes); }
};

/// Lays tiles out, one cell a tile and at its place.
std::vector<TreemapCell> treemapCells(const std::vector<TreemapTile>& tiles, QSize size,
                                      const TreemapLanguage& language);

/// The cell at a point; -1 where there is none.
int cellAt(const std::vector<TreemapCell>& cells, QPoint point) noexcept;

/// The cell that an arrow key leads to from another: the nearest one that lies beyond its edge, of those the
/// one that it faces most. -1 where there is none.
int neighbourOf(const std::vector<TreemapCell>& cells, int from, Qt::Key arrow) noexcept;

} // namespace varnet
