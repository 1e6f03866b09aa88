#include "VarnetApp/StorageMap/TreemapCells.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace varnet {
namespace {

TreemapLanguage english() {
    return {Figures(QLocale::c()), [](const QString& text) { return text; }};
}

TreemapTile tile(const std::string& id, std::uint64_t bytes, std::vector<TreemapPart> parts = {}) {
    DiskMapNode node;
    node.id = id;
    node.title = id;
    node.subtitle = "Explore folder";
    node.bytes = bytes;
    node.symbol = "folder.fill";
    return {node, std::move(parts)};
}

TEST(TreemapLabels, sayWhatFindsRoom) {
    struct Row {
        const char* name;
        QSize size;
        bool parts;
        bool partial;
        TileLabel label;
    };
    for (const Row& row : {
             Row{"large", {300, 200}, false, false, {TileWords::full, 2, true}},
             Row{"one line of subtitle", {112, 149}, false, false, {TileWords::full, 1, true}},
             Row{"small figure", {112, 119}, false, false, {TileWords::full, 1, false}},
             Row{"no subtitle", {112, 103}, false, false, {TileWords::full, 0, false}},
             Row{"too narrow for an icon", {111, 300}, false, false, {TileWords::nameAndSize, 0, false}},
             Row{"narrow and partial", {111, 300}, false, true, {TileWords::nameAndSize, 2, false}},
             Row{"too low for an icon", {300, 87}, false, false, {TileWords::nameAndSize, 0, false}},
             Row{"low", {300, 43}, false, false, {TileWords::name, 0, false}},
             Row{"narrow", {71, 300}, false, false, {TileWords::name, 0, false}},
             Row{"least name", {40, 22}, false, false, {TileWords::name, 0, false}},
             Row{"a pixel less", {39, 300}, false, false, {}},
             Row{"parts", {96, 96}, true, false, {TileWords::head, 1, false}},
             Row{"too small for parts", {112, 95}, true, false, {TileWords::full, 0, false}},
         })
        EXPECT_EQ(TileLabel::of(row.size, row.parts, row.partial), row.label) << row.name;
}

TEST(TreemapCells, standApartOnWholePixelsAndFillTheMap) {
    std::vector<TreemapTile> tiles;
    for (int i = 0; i < 9; ++i)
        tiles.push_back(tile("t" + std::to_string(i), static_cast<std::uint64_t>(1000 / (i + 1))));
    tiles.push_back(tile("nothing", 0));
    const QSize size(487, 331);
    const auto cells = treemapCells(tiles, size, english());
    ASSERT_EQ(cells.size(), tiles.size());
    EXPECT_TRUE(cells.back().frame.isEmpty());
    QRect all;
    for (std::size_t i = 0; i + 1 < cells.size(); ++i) {
        all |= cells[i].frame;
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_FALSE(cells[i].frame.adjusted(-3, -3, 3, 3).intersects(cells[j].frame)) << i << " " << j;
    }
    EXPECT_EQ(all, QRect(QPoint(), size));
    for (const QSize& none : {QSize(0, 100), QSize(100, 0), QSize(-3, 5)})
        for (const TreemapCell& cell : treemapCells(tiles, none, english()))
            EXPECT_TRUE(cell.frame.isEmpty());
}

TEST(TreemapCells, partsAreNamedWholeOrNotAtAll) {
    const std::vector<TreemapTile> tiles{tile("project", 100,
                                              {{StorageBucket::dependencies, "Dependencies", 90},
                                               {StorageBucket::git, "Git data", 6},
                                               {StorageBucket::files, "Project files", 4},
                                               {StorageBucket::caches, "Build caches", 0}})};
    const auto cells = treemapCells(tiles, {220, 200}, english());
    const auto& parts = cells.front().parts;
    ASSERT_EQ(parts.size(), 3U) << "a part of nothing takes no room";
    EXPECT_EQ(parts[0].title, "Dependencies");
    EXPECT_EQ(parts[0].figure, "1 KB");
    EXPECT_TRUE(parts[1].title.isEmpty());
    for (const TreemapPartCell& part : parts)
        EXPECT_TRUE(cells.front().frame.adjusted(6, 48, -6, -6).contains(part.frame));
}

TEST(TreemapCells, arrowsLeadToTheNeighbour) {
    //  0 | 1
    //    | 2 | 3
    const std::vector<QRect> frames{
        {0, 0, 96, 200}, {100, 0, 100, 96}, {100, 100, 60, 100}, {164, 100, 36, 100}};
    std::vector<TreemapCell> cells(frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i)
        cells[i].frame = frames[i];
    struct Row {
        const char* name;
        int from;
        Qt::Key arrow;
        int to;
    };
    for (const Row& row : {
             Row{"to the one that it faces most", 0, Qt::Key_Right, 2},
             Row{"back", 2, Qt::Key_Left, 0},
             Row{"next", 2, Qt::Key_Right, 3},
             Row{"down to the wider one", 1, Qt::Key_Down, 2},
             Row{"up", 3, Qt::Key_Up, 1},
             Row{"at the edge", 3, Qt::Key_Right, -1},
             Row{"nothing below", 0, Qt::Key_Down, -1},
             Row{"from nowhere", -1, Qt::Key_Right, -1},
         })
        EXPECT_EQ(neighbourOf(cells, row.from, row.arrow), row.to) << row.name;
}

TEST(TreemapCells, manyTilesAreNotEatenByTheirGaps) {
    std::vector<TreemapTile> tiles;
    for (int i = 0; i < 20'000; ++i)
        tiles.push_back(tile(std::to_string(i), 1'000));
    const auto cells = treemapCells(tiles, {800, 600}, english());
    const auto shown =
        std::ranges::count_if(cells, [](const TreemapCell& cell) { return !cell.frame.isEmpty(); });
    EXPECT_EQ(shown, 20'000);
}

} // namespace
} // namespace varnet
