#include "VarnetCore/Disk/WholeDiskContent.h"

#include "VarnetCore/Base/Utf8.h"
#include "VarnetCore/Disk/StorageItemVisual.h"

#include <algorithm>
#include <array>
#include <limits>

namespace varnet {

namespace {

/// Where worktrees are kept, below whatever home or checkout.
constexpr std::array projectFolders{"/.claude/worktrees", "/conductor/workspaces", "/.codex/worktrees",
                                    "/.cursor/worktrees"};

const char* subtitleOf(const DiskUsageEntry& entry) {
    if (entry.partial) return "Not fully mapped";
    if (WholeDiskContent::isProject(entry.path)) return "AI / project files";
    if (entry.path == "/") return "System files";
    if (WholeDiskContent::isGrouped(entry.path)) return "Grouped to keep this view fast";
    return entry.directory ? "Explore folder" : "Show in Finder";
}

} // namespace

bool WholeDiskContent::isGrouped(std::string_view path) noexcept {
    return path.starts_with("__");
}

bool WholeDiskContent::isProject(std::string_view path) {
    return std::ranges::any_of(projectFolders, [&](std::string_view folder) {
        const std::size_t at = path.find(folder);
        const std::size_t end = at + folder.size();
        return at != std::string_view::npos && (end == path.size() || path[end] == '/');
    });
}

std::vector<DiskUsageEntry> WholeDiskContent::filtered(const std::vector<DiskUsageEntry>& entries,
                                                       std::string_view search) {
    if (search.empty()) return entries;
    const std::string sought = caseFoldedUtf8(search);
    std::vector<DiskUsageEntry> result;
    std::ranges::copy_if(entries, std::back_inserter(result), [&](const DiskUsageEntry& entry) {
        return caseFoldedUtf8(entry.name).find(sought) != std::string::npos;
    });
    return result;
}

DiskMapNode WholeDiskContent::node(const DiskUsageEntry& entry) {
    const StorageItemVisual visual = StorageItemVisual::resolve(entry, isProject(entry.path));
    DiskMapNode node;
    node.id = entry.path;
    node.title = entry.name;
    node.subtitle = subtitleOf(entry);
    node.bytes = entry.bytes;
    node.partial = entry.partial;
    node.color = visual.color;
    node.symbol = visual.symbol;
    node.localizeTitle = isGrouped(entry.path);
    return node;
}

std::vector<DiskMapNode> WholeDiskContent::nodes(const std::vector<DiskUsageEntry>& entries) {
    std::vector<DiskMapNode> result;
    DiskMapNode rest;
    std::size_t count = 0;
    for (const DiskUsageEntry& entry : entries) {
        if (entry.bytes == 0) continue;
        if (++count <= mostTiles) {
            result.push_back(node(entry));
            continue;
        }
        if (__builtin_add_overflow(rest.bytes, entry.bytes, &rest.bytes))
            rest.bytes = std::numeric_limits<std::uint64_t>::max();
        rest.partial = rest.partial || entry.partial;
    }
    if (count > mostTiles) {
        rest.id = moreID;
        rest.title = std::to_string(count - mostTiles) + " more items";
        rest.subtitle = "Grouped to keep this view fast";
        rest.symbol = "square.stack.3d.up.fill";
        rest.localizeTitle = true;
        result.push_back(std::move(rest));
    }
    return result;
}

} // namespace varnet
