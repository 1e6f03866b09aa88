#include "VarnetApp/WholeDiskViews/WholeDiskModel.h"

#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/StorageMap/DiskNames.h"
#include "VarnetApp/StorageStore/DiskStorageStore.h"
#include "VarnetCore/Disk/WholeDiskContent.h"

#include <algorithm>
#include <utility>

namespace varnet {

WholeDiskModel::WholeDiskModel(QObject* parent) : ViewModel(parent), language_{Figures(QLocale::c()), {}} {}

WholeDiskStore* WholeDiskModel::disk() const {
    return begun_ && context().storage ? &context().storage->wholeDisk() : nullptr;
}

void WholeDiskModel::begin() {
    begun_ = true;
    speak();
    connect(&context().localization, &AppLocalization::languageChanged, this, [this] {
        speak();
        refresh();
        crumbs_.retell();
        rows_.retell();
    });
    if (WholeDiskStore* const store = disk()) {
        connect(store, &WholeDiskStore::changed, this, &WholeDiskModel::refresh);
        connect(store, &WholeDiskStore::accessExplanationRequested, this,
                &WholeDiskModel::accessExplanationRequested);
    }
    refresh();
}

void WholeDiskModel::speak() {
    const AppLocalization& localization = context().localization;
    language_ = {Figures(localization.locale()),
                 [&localization](const QString& text) { return localization.text(text); }};
}

void WholeDiskModel::refresh() {
    if (!begun_) return; // the view sets its choices while it is made
    static const DiskUsageScan nothing;
    const WholeDiskStore* const store = disk();
    const bool told = store && store->scan();
    const DiskUsageScan& scan = told ? *store->scan() : nothing;
    scanning_ = store && store->scanning();
    started_ = store && (told || scanning_ || store->hasIndex() || store->failure());
    scanLabel_ = scanning_ ? "Stop scan" : "Rescan";
    scanIcon_ = scanning_ ? "stop" : "refresh";
    itemsChecked_ = scanning_ ? WholeDiskTexts::itemsChecked(store->itemsChecked(), language_.figures) : "";
    refreshCapacity();
    refreshContent(scan);

    const WholeDiskTexts::State state{.scan = told ? &scan : nullptr,
                                      .started = started_,
                                      .scanning = scanning_,
                                      .itemsChecked = store ? store->itemsChecked() : 0,
                                      .failure = store ? store->failure() : std::nullopt,
                                      .searching = !search_.isEmpty()};
    const bool empty = !(asList_ ? hasRows_ : hasTiles_);
    notice_ = WholeDiskTexts::notice(state, empty, language_.figures);
    status_ = WholeDiskTexts::status(state, empty);
    unreadable_ = WholeDiskTexts::unreadable(scan.unreadable, language_.figures);
    size_ = told && !scan.entries.empty() ? language_.figures.diskSize(scan.bytes()) : QString();
    crumbs_.update(diskCrumbs(store ? store->path() : std::nullopt, diskName_.toStdString(),
                              static_cast<std::size_t>(crumbRoom_)));
    emit changed();
}

void WholeDiskModel::refreshSoon() {
    if (!begun_ || std::exchange(refreshWaits_, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            refreshWaits_ = false;
            refresh();
        },
        Qt::QueuedConnection);
}

void WholeDiskModel::refreshCapacity() {
    const WholeDiskStore* const store = disk();
    hasCapacity_ = store && store->capacity();
    diskName_ = language_.text("Startup disk");
    if (!hasCapacity_) return;
    const DiskCapacity& capacity = *store->capacity();
    const std::uint64_t free = std::min(capacity.free, capacity.total);
    if (capacity.name != "Startup disk") diskName_ = shownName(capacity.name);
    used_ = language_.figures.diskSize(capacity.total - free);
    free_ = language_.figures.diskSize(free);
    usedShare_ = static_cast<double>(capacity.total - free) / static_cast<double>(capacity.total);
}

void WholeDiskModel::refreshContent(const DiskUsageScan& scan) {
    std::vector<DiskUsageEntry> found;
    if (!search_.isEmpty()) found = WholeDiskContent::filtered(scan.entries, search_.toStdString());
    const std::vector<DiskUsageEntry>& entries = search_.isEmpty() ? scan.entries : found;

    std::vector<TreemapTile> tiles;
    for (DiskMapNode& node : WholeDiskContent::nodes(entries))
        tiles.push_back({std::move(node)});
    hasTiles_ = !tiles.empty();
    map_.update(std::move(tiles));

    const auto isEmpty = [](const DiskUsageEntry& entry) { return entry.bytes == 0; };
    const auto empty = static_cast<std::size_t>(std::ranges::count_if(entries, isEmpty));
    hasEmpty_ = empty > 0;
    const std::size_t all = entries.size() - (showEmpty_ ? 0 : empty);
    const std::size_t shown = std::min(all, std::max(static_cast<std::size_t>(firstRows_), shownRows_));
    const double largest = entries.empty() ? 0 : static_cast<double>(entries.front().bytes);
    std::vector<DiskRow> rows;
    rows.reserve(shown);
    for (const DiskUsageEntry& entry : entries) {
        if (rows.size() == shown) break;
        if (!showEmpty_ && isEmpty(entry)) continue;
        const double share = largest > 0 ? std::min(1.0, static_cast<double>(entry.bytes) / largest) : 0;
        rows.push_back({entry.path, entry, share, &language_});
    }
    hasRows_ = !rows.empty();
    rows_.update(std::move(rows));
    more_ = WholeDiskTexts::showMore(all - shown, language_.figures);
}

void WholeDiskModel::setCrumbRoom(int count) {
    count = std::max(count, 3);
    if (std::exchange(crumbRoom_, count) != count) refreshSoon();
}

void WholeDiskModel::setFirstRows(int count) {
    count = std::max(count, 4);
    if (std::exchange(firstRows_, count) != count) refreshSoon();
}

void WholeDiskModel::setAsList(bool list) {
    if (std::exchange(asList_, list) != list) refresh();
}

void WholeDiskModel::setSearch(const QString& search) {
    if (search_ == search) return;
    search_ = search;
    shownRows_ = 0;
    refresh();
}

void WholeDiskModel::setShowEmpty(bool shown) {
    if (std::exchange(showEmpty_, shown) != shown) refresh();
}

void WholeDiskModel::showMore() {
    // A folder of thousands is through after a few presses.
    shownRows_ = std::max<std::size_t>(32, rows_.size() * 4);
    refresh();
}

void WholeDiskModel::open(const QString& key) {
    WholeDiskStore* const store = disk();
    const std::string path = keyFromQml(key);
    if (!store || !store->scan() || WholeDiskContent::isGrouped(path)) return;
    const auto& entries = store->scan()->entries;
    const auto entry = std::ranges::find(entries, path, &DiskUsageEntry::path);
    if (entry == entries.end()) return;
    if (entry->directory) {
        showFolder(path);
    } else {
        store->reveal(path);
    }
}

void WholeDiskModel::goTo(const QString& crumb) {
    const std::string path = keyFromQml(crumb);
    showFolder(path == DiskCrumb::top ? std::nullopt : std::optional(path));
}

void WholeDiskModel::goUp() {
    const WholeDiskStore* const store = disk();
    if (store && store->path()) showFolder(folderAbove(*store->path()));
}

void WholeDiskModel::showFolder(std::optional<std::string> path) {
    WholeDiskStore* const store = disk();
    if (!store || path == store->path()) return;
    // What was sought in one folder is not what is sought in another.
    search_.clear();
    shownRows_ = 0;
    store->open(std::move(path), false);
}

void WholeDiskModel::scanOrStop() {
    WholeDiskStore* const store = disk();
    if (!store) return;
    if (store->scanning()) {
        store->cancel();
    } else {
        store->open(store->path(), true);
    }
}

void WholeDiskModel::openAccessSettings() {
    if (WholeDiskStore* const store = disk()) store->openAccessSettings();
}

} // namespace varnet
