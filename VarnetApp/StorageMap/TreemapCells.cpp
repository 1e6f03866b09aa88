#include "VarnetApp/StorageMap/TreemapCells.h"

#include "VarnetApp/Components/FigureItem.h"
#include "VarnetApp/Components/Theme.h"
#include "VarnetApp/StorageMap/DiskNames.h"
#include "VarnetApp/StorageMap/MapLooks.h"
#include "VarnetCore/Disk/StorageTreemap.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <limits>

namespace varnet {

namespace {

/// Where there are very many tiles, gaps must not eat them.
int gapOf(std::size_t count) noexcept {
    return count <= 200 ? 4 : count <= 2'000 ? 2 : 1;
}

/// Lays weights out with a gap between their frames, in whole pixels: edges are rounded, not sizes.
std::vector<QRect> frames(const std::vector<double>& weights, const QRect& area, int gap) {
    std::vector<QRect> result;
    result.reserve(weights.size());
    if (area.isEmpty()) {
        result.resize(weights.size());
        return result;
    }
    const auto pixel = [](double edge) { return static_cast<int>(std::lround(edge)); };
    for (const MapRectangle& tile : StorageTreemap::rectangles(
             weights, {static_cast<double>(area.x()), static_cast<double>(area.y()),
                       static_cast<double>(area.width() + gap), static_cast<double>(area.height() + gap)})) {
        const QPoint corner(pixel(tile.x), pixel(tile.y));
        result.emplace_back(corner, QSize(std::max(0, pixel(tile.x + tile.width) - gap - corner.x()),
                                          std::max(0, pixel(tile.y + tile.height) - gap - corner.y())));
    }
    return result;
}

class PartCells {
public:
    explicit PartCells(const TreemapLanguage& language)
        : language_(language), font_(Theme::shared().caption()), metrics_(font_) {}

    std::vector<TreemapPartCell> of(const std::vector<TreemapPart>& parts, const QRect& area) const {
        std::vector<double> weights;
        weights.reserve(parts.size());
        for (const TreemapPart& part : parts)
            weights.push_back(static_cast<double>(part.bytes));
        const std::vector<QRect> places = frames(weights, area, 2);
        std::vector<TreemapPartCell> cells;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            TreemapPartCell cell{places[i], parts[i].bucket, {}, {}};
            if (cell.frame.isEmpty()) continue;
            const int room = cell.frame.width() - 16;
            const QString title = language_.text(QString::fromStdString(parts[i].title));
            // A name that is cut says nothing: whole or not at all.
            if (cell.frame.height() >= 40 && metrics_.horizontalAdvance(title) <= room) cell.title = title;
            const QString figure = language_.figures.diskSize(parts[i].bytes);
            if (cell.frame.width() >= 56 && cell.frame.height() >= 24 && figureWidth(font_, figure) <= room)
                cell.figure = figure;
            cells.push_back(std::move(cell));
        }
        return cells;
    }

private:
    const TreemapLanguage& language_;
    const QFont font_;
    const QFontMetricsF metrics_;
};

} // namespace

TileLabel TileLabel::of(QSize size, bool hasParts, bool partial) noexcept {
    const int width = size.width();
    const int height = size.height();
    if (hasParts && width >= 96 && height >= 96) return {TileWords::head, 1, false};
    if (width >= 112 && height >= 88)
        return {TileWords::full, height >= 150 ? 2 : height >= 104 ? 1 : 0, height >= 120};
    if (width >= 72 && height >= 44) return {TileWords::nameAndSize, partial && height >= 80 ? 2 : 0, false};
    if (width >= 40 && height >= 22) return {TileWords::name, 0, false};
    return {};
}

QString TreemapLanguage::title(const DiskMapNode& node) const {
    return node.localizeTitle ? text(QString::fromStdString(node.title)) : shownName(node.title);
}

QString TreemapLanguage::subtitle(const DiskMapNode& node) const {
    return node.localizeSubtitle ? text(QString::fromStdString(node.subtitle)) : shownName(node.subtitle);
}

std::vector<TreemapCell> treemapCells(const std::vector<TreemapTile>& tiles, QSize size,
                                      const TreemapLanguage& language) {
    std::vector<double> weights;
    weights.reserve(tiles.size());
    for (const TreemapTile& tile : tiles)
        weights.push_back(static_cast<double>(tile.node.bytes));
    const std::vector<QRect> places = frames(weights, {{}, size}, gapOf(tiles.size()));
    const PartCells parts(language);
    std::vector<TreemapCell> cells(tiles.size());
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const TreemapTile& tile = tiles[i];
        TreemapCell& cell = cells[i];
        cell.frame = places[i];
        cell.tone = tile.node.color;
        cell.label = TileLabel::of(cell.frame.size(), !tile.parts.empty(), tile.node.partial);
        if (cell.label.words == TileWords::none) continue;
        cell.title = language.title(tile.node);
        if (cell.label.words == TileWords::name) continue;
        cell.figure = language.size(tile.node);
        if (cell.label.words == TileWords::nameAndSize && cell.label.subtitleLines == 0) continue;
        cell.subtitle = language.subtitle(tile.node);
        cell.partial = tile.node.partial;
        if (cell.label.words == TileWords::full) {
            cell.icon = MapLooks::iconOf(tile.node.symbol);
        } else if (cell.label.words == TileWords::head) {
            cell.parts = parts.of(tile.parts, cell.frame.adjusted(6, TileLabel::headHeight, -6, -6));
        }
    }
    return cells;
}

int cellAt(const std::vector<TreemapCell>& cells, QPoint point) noexcept {
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (cells[i].frame.contains(point)) return static_cast<int>(i);
    return -1;
}

int neighbourOf(const std::vector<TreemapCell>& cells, int from, Qt::Key arrow) noexcept {
    if (from < 0 || static_cast<std::size_t>(from) >= cells.size()) return -1;
    const bool sideways = arrow == Qt::Key_Left || arrow == Qt::Key_Right;
    const bool back = arrow == Qt::Key_Left || arrow == Qt::Key_Up;
    // Turned so that every way is to the right.
    struct Span {
        int near, far, low, high;
    };
    const auto spanOf = [&](const QRect& frame) {
        const int left = sideways ? frame.x() : frame.y();
        const int right = left + (sideways ? frame.width() : frame.height());
        const int low = sideways ? frame.y() : frame.x();
        const int high = low + (sideways ? frame.height() : frame.width());
        return back ? Span{-right, -left, low, high} : Span{left, right, low, high};
    };
    const Span here = spanOf(cells[static_cast<std::size_t>(from)].frame);
    int best = -1;
    int bestAside = std::numeric_limits<int>::max();
    int bestAhead = 0;
    int bestFacing = 0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const Span there = spanOf(cells[i].frame);
        if (cells[i].frame.isEmpty() || there.near < here.far) continue;
        const int facing = std::min(here.high, there.high) - std::max(here.low, there.low);
        const int aside = facing > 0 ? 0 : 1 - facing;
        const int ahead = there.near - here.far;
        const bool better = aside != bestAside   ? aside < bestAside
                            : ahead != bestAhead ? ahead < bestAhead
                                                 : facing > bestFacing;
        if (best >= 0 && !better) continue;
        best = static_cast<int>(i);
        bestAside = aside;
        bestAhead = ahead;
        bestFacing = facing;
    }
    // Something that is neither beside nor in the way is no neighbour.
    return bestAside > 0 ? -1 : best;
}

} // namespace varnet
