#include "VarnetApp/StorageViews/StorageLevel.h"

#include "VarnetApp/StorageMap/DiskNames.h"
#include "VarnetApp/StorageViews/StorageTexts.h"
#include "VarnetCore/Disk/StorageMap.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace varnet {

namespace {

using Kind = StorageLevel::Kind;

std::vector<TreemapPart> partsOf(const StorageBuckets& buckets) {
    std::vector<TreemapPart> parts;
    for (const auto& [bucket, bytes] : buckets)
        if (bytes > 0) parts.push_back({bucket, std::string(rawValue(bucket)), bytes});
    return parts;
}

DiskMapNode nodeOf(std::string id, const QString& title, const QString& subtitle, std::uint64_t bytes,
                   bool partial) {
    DiskMapNode node;
    node.id = std::move(id);
    node.title = title.toStdString();
    node.subtitle = partial ? "Partial measurement" : subtitle.toStdString();
    node.bytes = bytes;
    node.partial = partial;
    node.color = MapTone::blue;
    node.symbol = "chevron.left.forwardslash.chevron.right";
    return node;
}

DiskMapNode nodeOf(StorageBucket bucket, std::uint64_t bytes) {
    struct Look {
        MapTone color;
        const char* symbol;
    };
    static const std::map<StorageBucket, Look> looks{
        {StorageBucket::dependencies, {MapTone::yellow, "shippingbox.fill"}},
        {StorageBucket::caches, {MapTone::orange, "bolt.fill"}},
        {StorageBucket::git, {MapTone::blue, "arrow.triangle.branch"}},
        {StorageBucket::files, {MapTone::gray, "doc.fill"}}};
    DiskMapNode node;
    node.id = rawValue(bucket);
    node.title = node.id;
    node.bytes = bytes;
    node.color = looks.at(bucket).color;
    node.symbol = looks.at(bucket).symbol;
    node.localizeTitle = true;
    return node;
}

StorageMap familyMap(std::span<const StorageFamily> families, bool scanning) {
    std::vector<DiskMapNode> nodes;
    for (const StorageFamily& family : families)
        nodes.push_back(nodeOf(family.id, shownName(family.name()), StorageTexts::subtitle(family, scanning),
                               family.bytes(), StorageTexts::isPartial(family, scanning)));
    return StorageMap::group(std::move(nodes), false);
}

std::vector<TreemapTile> familyTiles(std::vector<DiskMapNode> nodes,
                                     std::span<const StorageFamily> families) {
    std::vector<TreemapTile> tiles;
    for (DiskMapNode& node : nodes) {
        const StorageFamily* const family = StorageLevels::familyOf(families, node.id);
        tiles.push_back({std::move(node), family ? partsOf(family->buckets()) : std::vector<TreemapPart>{}});
    }
    return tiles;
}

std::vector<TreemapTile> projectTiles(const StorageFamily& family, bool scanning) {
    std::vector<DiskMapNode> nodes;
    for (const StorageProject& member : family.members)
        nodes.push_back(nodeOf(member.path, StorageTexts::title(member),
                               StorageTexts::subtitle(member, scanning), member.bytes(),
                               StorageTexts::isPartial(member, scanning)));
    std::vector<TreemapTile> tiles;
    for (DiskMapNode& node : StorageMap::group(std::move(nodes), true).displayed()) {
        const auto member = std::ranges::find(family.members, node.id, &StorageProject::path);
        tiles.push_back({std::move(node), partsOf(member->buckets)});
    }
    return tiles;
}

std::vector<TreemapTile> bucketTiles(const StorageProject& project) {
    std::vector<DiskMapNode> nodes;
    for (const auto& [bucket, bytes] : project.buckets)
        nodes.push_back(nodeOf(bucket, bytes));
    std::vector<TreemapTile> tiles;
    for (DiskMapNode& node : StorageMap::group(std::move(nodes), true).displayed())
        tiles.push_back({std::move(node)});
    return tiles;
}

} // namespace

const StorageFamily* StorageLevels::familyOf(std::span<const StorageFamily> families, const std::string& id) {
    const auto found = std::ranges::find(families, id, &StorageFamily::id);
    return found == families.end() ? nullptr : &*found;
}

const StorageProject* StorageLevels::projectOf(std::span<const StorageFamily> families,
                                               const std::string& path) {
    for (const StorageFamily& family : families)
        for (const StorageProject& member : family.members)
            if (member.path == path) return &member;
    return nullptr;
}

StorageLevel StorageLevels::present(const StorageLevel& level, std::span<const StorageFamily> families) {
    const StorageLevel top{level.amongSmall ? Kind::small : Kind::all};
    switch (level.kind) {
    case Kind::all:
        return level;
    case Kind::small:
        return familyMap(families, false).small.empty() ? StorageLevel{} : level;
    case Kind::family:
        return familyOf(families, level.familyID) ? level : present(top, families);
    case Kind::project:
        break;
    }
    const StorageFamily* const family = familyOf(families, level.familyID);
    if (family &&
        std::ranges::find(family->members, level.projectPath, &StorageProject::path) != family->members.end())
        return level;
    return family && family->members.size() > 1 ? StorageLevel{Kind::family, level.amongSmall, family->id}
                                                : present(top, families);
}

std::vector<TreemapTile> StorageLevels::tiles(const StorageLevel& level,
                                              std::span<const StorageFamily> families, bool scanning) {
    switch (level.kind) {
    case Kind::all:
        return familyTiles(familyMap(families, scanning).displayed(), families);
    case Kind::small:
        return familyTiles(familyMap(families, scanning).small, families);
    case Kind::family:
        if (const StorageFamily* const family = familyOf(families, level.familyID))
            return projectTiles(*family, scanning);
        return {};
    case Kind::project:
        if (const StorageProject* const project = projectOf(families, level.projectPath))
            return bucketTiles(*project);
        return {};
    }
    return {};
}

StorageLevel StorageLevels::below(const StorageLevel& level, const std::string& tileID,
                                  std::span<const StorageFamily> families) {
    const bool amongSmall = level.amongSmall || level.kind == Kind::small;
    switch (level.kind) {
    case Kind::all:
    case Kind::small:
        if (level.kind == Kind::all && tileID == StorageMap::smallID) return {Kind::small};
        if (const StorageFamily* const family = familyOf(families, tileID)) {
            if (family->members.size() == 1)
                return {Kind::project, amongSmall, family->id, family->members.front().path};
            return {Kind::family, amongSmall, family->id};
        }
        break;
    case Kind::family:
        if (projectOf(families, tileID)) return {Kind::project, amongSmall, level.familyID, tileID};
        break;
    case Kind::project:
        break;
    }
    return level;
}

std::vector<StorageCrumb> StorageLevels::trail(const StorageLevel& level,
                                               std::span<const StorageFamily> families) {
    std::vector<StorageCrumb> crumbs{{StorageLevel{}, "All projects", true}};
    if (level.kind == Kind::all) return crumbs;
    if (level.kind == Kind::small || level.amongSmall)
        if (const auto node = familyMap(families, false).smallNode)
            crumbs.push_back({{Kind::small}, QString::fromStdString(node->title), true});
    const StorageFamily* const family = familyOf(families, level.familyID);
    if (family) {
        const bool alone = family->members.size() == 1;
        crumbs.push_back({alone ? level : StorageLevel{Kind::family, level.amongSmall, family->id},
                          shownName(family->name())});
        if (alone) return crumbs;
    }
    if (level.kind == Kind::project)
        if (const StorageProject* const project = projectOf(families, level.projectPath))
            crumbs.push_back({level, StorageTexts::title(*project)});
    return crumbs;
}

} // namespace varnet
