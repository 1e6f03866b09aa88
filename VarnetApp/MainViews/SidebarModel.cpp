#include "VarnetApp/MainViews/SidebarModel.h"

#include "VarnetApp/AppStore/VarnetStore.h"
#include "VarnetApp/FlameCollectionStore/FlameCollectionStore.h"
#include "VarnetApp/Localization/AppLocalization.h"
#include "VarnetApp/Localization/Figures.h"

#include <algorithm>

namespace varnet {

namespace {

QString named(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The first page below the sidebar's main block.
constexpr Page firstOfTheRest = Page::sources;

} // namespace

std::vector<QByteArray> SidebarEntry::roles() {
    return {"name", "title", "icon", "count", "selected", "apart", "digit"};
}

QVariant SidebarEntry::value(int role) const {
    const PageEntry& entry = entryOf(page);
    switch (role) {
    case 0:
    case 2: // each page's icon is called like the page
        return named(entry.name);
    case 1:
        return named(entry.title);
    case 3:
        return count ? Figures(locale).count(*count) : QString();
    case 4:
        return selected;
    case 5:
        return page == firstOfTheRest;
    case 6:
        return entry.digit;
    default:
        return {};
    }
}

void SidebarModel::begin() {
    connect(&store(), &VarnetStore::snapshotChanged, this, &SidebarModel::refresh);
    connect(&store(), &VarnetStore::pageChanged, this, &SidebarModel::refresh);
    if (const FlameCollectionStore* const collection = context().collection)
        connect(collection, &FlameCollectionStore::badgesChanged, this, &SidebarModel::refresh);
    connect(&context().localization, &AppLocalization::languageChanged, this, &SidebarModel::refresh);
    refresh();
}

void SidebarModel::refresh() {
    auto ordered = varnet::pages;
    std::ranges::sort(ordered, {}, &PageEntry::digit);
    std::vector<SidebarEntry> rows;
    rows.reserve(ordered.size());
    for (const PageEntry& entry : ordered) {
        rows.push_back({std::string(entry.name), entry.page, store().itemCount(entry.page),
                        entry.page == store().page(), context().localization.locale()});
    }
    pages_.update(std::move(rows));
}

} // namespace varnet
