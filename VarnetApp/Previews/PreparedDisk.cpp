#include "VarnetApp/Previews/PreparedDisk.h"

#include "VarnetCore/Base/Clock.h"
#include "VarnetCore/Disk/DiskUsageScanner.h"
#include "probes/SystemProbes.h"

#include <cmath>
#include <fstream>
#include <memory>
#include <utility>

namespace varnet {

namespace {

constexpr double gigabyte = 1e9;

std::uint64_t sized(double gigabytes) {
    return static_cast<std::uint64_t>(std::llround(gigabytes * gigabyte));
}

void add(DiskUsageScan& scan, const std::string& folder, std::string name, double gigabytes,
         bool directory = true, bool partial = false) {
    std::string path = folder + "/" + name;
    scan.entries.push_back({std::move(path), std::move(name), directory, sized(gigabytes), partial});
}

DiskUsageScan finished() {
    DiskUsageScan scan;
    scan.entriesRead = 1'482'310;
    scan.complete = true;
    return scan;
}

bool write(const std::filesystem::path& file, std::size_t bytes) {
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    std::ofstream stream(file, std::ios::binary);
    stream << std::string(bytes, 'v');
    return !error && stream.good();
}

} // namespace

DiskCapacity PreparedDisk::capacity() {
    return {"Startup disk", sized(1'000.2), sized(317.8)};
}

DiskUsageScan PreparedDisk::homeFolder() {
    DiskUsageScan scan = finished();
    scan.unreadable = 14;
    add(scan, home, "code", 138.3);
    add(scan, home, "Videos", 96.2);
    add(scan, home, ".cache", 61.4);
    add(scan, home, "Pictures", 52.7);
    add(scan, home, "Downloads", 30.1, true, true);
    add(scan, home, "Music", 14.8);
    add(scan, home, "disk-image.img", 9.4, false);
    add(scan, home, ".local", 6.2);
    const std::pair<const char*, double> rest[] = {
        {".cargo", 2.15},       {"Documents", 1.8},  {".docker", 1.4},        {".npm", 1.1},
        {".config", 0.8},       {"backups", 0.6},    {"Desktop", 0.4},        {".claude", 0.3},
        {".mozilla", 0.25},     {"Games", 0.2},      {"notes.pdf", 0.15},     {"fonts", 0.1},
        {"talk.mp4", 0.08},     {".ssh", 0.05},      {"archive.zip", 0.04},   {"scratch", 0.03},
        {"inventory.db", 0.02}, {"photo.jpg", 0.01}, {"settings.json", 0.01}, {"todo.md", 0.01},
    };
    for (const auto& [name, gigabytes] : rest)
        add(scan, home, name, gigabytes, std::string_view(name).find('.', 1) == std::string_view::npos);
    for (const char* const name : {"Public", "Templates", "mnt"})
        add(scan, home, name, 0);
    return scan;
}

DiskUsageScan PreparedDisk::top() {
    DiskUsageScan scan = finished();
    scan.unreadable = 203;
    for (const auto& [name, gigabytes] :
         {std::pair{"home", 418.6}, {"var", 141.9}, {"usr", 64.3}, {"opt", 22.7}, {"boot", 1.2}})
        add(scan, "", name, gigabytes, true, std::string_view(name) == "var");
    return scan;
}

DiskUsageScan PreparedDisk::beginning() {
    DiskUsageScan scan;
    scan.entriesRead = 48'210;
    add(scan, "", "usr", 21.4, true, true);
    add(scan, "", "home", 12.9, true, true);
    add(scan, "", "opt", 8.8);
    return scan;
}

DiskUsageScan PreparedDisk::crowded() {
    DiskUsageScan scan = finished();
    const std::string folder = std::string(home) + "/photos";
    for (std::size_t i = 0; i < mostDiskRows; ++i)
        add(scan, folder, "IMG_" + std::to_string(10'000 + i) + ".jpg",
            0.024 / (1 + static_cast<double>(i) / 400), false);
    scan.entries.push_back({otherFilesPath, "80000 more items", false, sized(0.9), false});
    return scan;
}

DiskUsageScan PreparedDisk::oddNames() {
    DiskUsageScan scan = finished();
    const std::string folder =
        std::string(home) + "/downloads from the old machine/unsorted/2019 and before/misc";
    add(scan, folder, "caf\xE9 (latin 1)", 5.2);
    add(scan, folder, "two\nlines", 4.1);
    add(scan, folder,
        "a-name-so-long-that-nothing-could-ever-show-it-whole-in-a-row-or-on-a-tile-of-the-map.tar.gz", 3.3,
        false);
    add(scan, folder, "資料と写真", 2.2);
    add(scan, folder, "Žluťoučký kůň", 1.4);
    return scan;
}

std::optional<DiskUsageScan> PreparedDisk::measuredTree(const std::filesystem::path& folder) {
    const std::pair<const char*, std::size_t> files[] = {
        {"code/storefront/node_modules/library/index.js", 420'000},
        {"code/storefront/src/main.ts", 60'000},
        {"code/api/target/debug/api", 260'000},
        {"Videos/talk.mp4", 480'000},
        {".cache/wheels/archive.whl", 300'000},
        {"Pictures/harbour.jpg", 210'000},
        {"Downloads/installer.deb", 130'000},
        {"Music/evening.flac", 90'000},
        {"notes.md", 4'000},
    };
    for (const auto& [name, bytes] : files)
        if (!write(folder / name, bytes)) return std::nullopt;
    std::error_code error;
    std::filesystem::create_directory(folder / "Empty", error);

    const auto index = DiskUsageIndex::make();
    if (!index) return std::nullopt;
    SystemProbes probes;
    const SystemClock clock;
    const DiskUsageScanner scanner({.token = std::make_shared<const StorageCancellation>(),
                                    .probes = probes,
                                    .clock = clock,
                                    .volumes = DiskVolumes::read(),
                                    .entryLimit = std::nullopt});
    const DiskUsageScan scan = scanner.scan(folder.string(), index->get());
    if (!scan.complete) return std::nullopt;
    auto answer = (*index)->folder(folder.string());
    return answer ? std::move(*answer) : std::nullopt;
}

} // namespace varnet
