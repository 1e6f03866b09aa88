#include "VarnetApp/Previews/WholeDiskScreens.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/Previews/PreparedDisk.h"
#include "VarnetApp/Previews/PreparedMachine.h"
#include "VarnetApp/StorageStore/DiskStorageStore.h"

#include <QMetaObject>
#include <QQuickItem>

#include <utility>

namespace varnet {

namespace {

constexpr QSize window{1040, 720};
constexpr QSize leastWindow{720, 520};

using Touch = std::function<void(QQuickItem&)>;

QQuickItem* itemNamed(QQuickItem& root, const QString& name) {
    if (root.objectName() == name) return &root;
    for (QQuickItem* const child : root.childItems())
        if (QQuickItem* const found = itemNamed(*child, name)) return found;
    return nullptr;
}

Touch press(const QString& name) {
    return [name](QQuickItem& root) {
        if (QQuickItem* const button = itemNamed(root, name)) QMetaObject::invokeMethod(button, "clicked");
    };
}

/// The way to the explanation of what is not reached.
void explainAccess(QQuickItem& root) {
    if (QObject* const view = root.findChild<QObject*>("wholeDisk"))
        QMetaObject::invokeMethod(view, "explainAccess");
}

Touch set(const QString& name, const char* property, const QVariant& value) {
    return [=](QQuickItem& root) {
        if (QQuickItem* const item = itemNamed(root, name)) item->setProperty(property, value);
    };
}

/// Lights a tile and puts the keyboard on another, as in use.
void use(QQuickItem& root) {
    QQuickItem* const map = itemNamed(root, "diskMap");
    if (!map) return;
    map->forceActiveFocus(Qt::TabFocusReason);
    map->setProperty("currentKey", QString(PreparedDisk::home) + "/.cache");
    map->setProperty("hoveredKey", QString(PreparedDisk::home) + "/code");
}

Touch asList(Touch further = {}) {
    return [further](QQuickItem& root) {
        if (QQuickItem* const layout = itemNamed(root, "diskLayout"))
            QMetaObject::invokeMethod(layout, "chosen", Q_ARG(int, 1));
        if (further) further(root);
    };
}

struct Shown {
    DiskUsageScan scan = PreparedDisk::homeFolder();
    std::optional<std::string> path = std::string(PreparedDisk::home);
    bool scanning = false;
    std::optional<std::string> failure = {};
};

Picture screen(const QString& name, Shown shown, Touch touch = {}, QSize size = window) {
    Picture picture{name,
                    "MainWindow",
                    size,
                    PreparedMachine::busy,
                    [](VarnetStore& store) { store.setPage(Page::storage); },
                    std::move(touch)};
    picture.storage = [shown = std::move(shown)](DiskStorageStore& storage) {
        storage.wholeDisk().setPreview(shown.scan, PreparedDisk::capacity(), shown.path, shown.scanning,
                                       shown.failure);
        storage.page.wholeDisk = true;
    };
    return picture;
}

Shown stopped() {
    Shown shown{PreparedDisk::beginning(), std::nullopt};
    shown.scan.stopped = true;
    shown.scan.unreadable = 3;
    return shown;
}

} // namespace

std::vector<Picture> wholeDiskScreens() {
    using namespace PreparedDisk;
    DiskUsageScan begun;
    begun.entriesRead = 1'204;
    DiskUsageScan emptied;
    emptied.complete = true;
    const Shown nothing{DiskUsageScan{}, std::nullopt};
    const Shown failed{DiskUsageScan{}, std::nullopt, false, "Couldn’t create the disk map. Try rescanning."};
    const Shown unsaved{homeFolder(), home, false, "Couldn’t save the disk map. Try rescanning."};
    const Shown empty{emptied, std::string(home) + "/Public"};
    const Shown crowd{crowded(), std::string(home) + "/photos"};
    const Shown odd{oddNames(),
                    std::string(home) + "/downloads from the old machine/unsorted/2019 and before/misc"};
    std::vector<Picture> pictures{
        screen("disk-map", {}, use),
        screen("disk-map-top", {top(), std::nullopt}),
        screen("disk-list", {}, asList()),
        screen("disk-list-empty-items", {}, asList(set("diskSearch", "text", "t"))),
        screen("disk-scanning-first", {begun, std::nullopt, true}),
        screen("disk-scanning", {beginning(), std::nullopt, true}),
        screen("disk-stopped", stopped()),
        screen("disk-failed", failed),
        screen("disk-failed-map", unsaved),
        screen("disk-empty", empty),
        screen("disk-empty-list", empty, asList()),
        screen("disk-no-match", {}, set("diskSearch", "text", "cabbage")),
        screen("disk-access", {}, press("aboutAccess")),
        screen("disk-access-sheet", {}, explainAccess),
        screen("disk-why", {}, press("aboutSums")),
        screen("disk-capacity", {}, press("aboutCapacity")),
        screen("disk-crowded", crowd),
        screen("disk-odd-names", odd),
        screen("disk-least", {}, {}, leastWindow),
        screen("disk-least-list", {}, asList(), leastWindow),
        screen("disk-least-scanning", {beginning(), std::nullopt, true}, {}, leastWindow),
        screen("disk-tall", {}, {}, {760, 1100}),
        screen("disk-wide", {}, {}, {1400, 900}),
    };
    Picture start = screen("disk-start", nothing);
    start.storage = [](DiskStorageStore& storage) { storage.page.wholeDisk = true; };
    pictures.push_back(start);
    start.name = "disk-start-least";
    start.size = leastWindow;
    pictures.push_back(std::move(start));
    return pictures;
}

std::vector<Picture> measuredDiskScreens(const std::filesystem::path& folder) {
    std::optional<DiskUsageScan> scan = PreparedDisk::measuredTree(folder);
    if (!scan) return {};
    return {screen("disk-measured", {std::move(*scan), folder.string()})};
}

} // namespace varnet
