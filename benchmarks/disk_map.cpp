// What a folder of 20,000 items costs the main thread: its map, and a key pressed in its search.

#include "VarnetApp/Previews/PreparedDisk.h"
#include "VarnetApp/StorageMap/TreemapCells.h"
#include "VarnetCore/Disk/WholeDiskContent.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>

namespace {

using namespace varnet;

void mapOfManyTiles(benchmark::State& state) {
    std::vector<TreemapTile> tiles;
    for (const DiskUsageEntry& entry : PreparedDisk::crowded().entries)
        tiles.push_back({WholeDiskContent::node(entry)});
    const TreemapLanguage language{Figures(QLocale::c()), [](const QString& text) { return text; }};
    for (auto _ : state)
        benchmark::DoNotOptimize(treemapCells(tiles, {784, 540}, language));
}
BENCHMARK(mapOfManyTiles)->Unit(benchmark::kMillisecond);

void searchOfManyRows(benchmark::State& state) {
    const std::vector<DiskUsageEntry> entries = PreparedDisk::crowded().entries;
    for (auto _ : state)
        benchmark::DoNotOptimize(WholeDiskContent::nodes(WholeDiskContent::filtered(entries, "img_2")));
}
BENCHMARK(searchOfManyRows)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
