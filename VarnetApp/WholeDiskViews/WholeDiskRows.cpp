#include "VarnetApp/WholeDiskViews/WholeDiskRows.h"

#include "VarnetApp/StorageMap/DiskNames.h"
#include "VarnetApp/StorageMap/MapLooks.h"
#include "VarnetCore/Disk/WholeDiskContent.h"

#include <algorithm>

namespace varnet {

std::vector<QByteArray> DiskRow::roles() {
    return {"key", "title", "subtitle", "partial", "figure", "share", "tone", "icon"};
}

QVariant DiskRow::value(int role) const {
    const DiskMapNode node = WholeDiskContent::node(entry);
    switch (role) {
    case 0:
        return keyInQml(entry.path);
    case 1:
        return language->title(node);
    case 2:
        return language->subtitle(node);
    case 3:
        return node.partial;
    case 4:
        return language->size(node);
    case 5:
        return share;
    case 6:
        return MapLooks::toneName(node.color);
    case 7:
        return MapLooks::iconOf(node.symbol);
    default:
        return {};
    }
}

std::vector<QByteArray> DiskCrumb::roles() {
    return {"key", "title", "isTop", "isCurrent", "collapsed"};
}

QVariant DiskCrumb::value(int role) const {
    switch (role) {
    case 0:
        return keyInQml(key);
    case 1:
        return shownName(name);
    case 2:
        return isTop;
    case 3:
        return current;
    case 4:
        return collapsed;
    default:
        return {};
    }
}

std::vector<DiskCrumb> diskCrumbs(const std::optional<std::string>& path, const std::string& diskName,
                                  std::size_t most) {
    std::vector<DiskCrumb> crumbs{{.key = DiskCrumb::top, .name = diskName, .isTop = true}};
    if (path) {
        for (std::size_t begin = 0; begin < path->size();) {
            const std::size_t end = std::min(path->find('/', begin), path->size());
            if (end > begin)
                crumbs.push_back({.key = path->substr(0, end), .name = path->substr(begin, end - begin)});
            begin = end + 1;
        }
        if (crumbs.size() == 1) crumbs.push_back({.key = *path, .name = *path});
    }
    crumbs.back().current = true;
    most = std::max<std::size_t>(most, 3);
    if (crumbs.size() <= most) return crumbs;
    // The top, one for the middle, and the end of the way.
    const auto kept = crumbs.end() - static_cast<std::ptrdiff_t>(most - 2);
    DiskCrumb middle = *(kept - 1);
    middle.name = "…";
    middle.collapsed = true;
    crumbs.erase(crumbs.begin() + 1, kept);
    crumbs.insert(crumbs.begin() + 1, std::move(middle));
    return crumbs;
}

std::optional<std::string> folderAbove(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos || slash == 0) return std::nullopt;
    return path.substr(0, slash);
}

} // namespace varnet
