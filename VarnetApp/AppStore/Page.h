#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace varnet {

/// Pages of the main window.
enum class Page { overview, sources, apps, projects, servers, storage, battery, hall };

/// What a page is called, and the digit that opens it. The digits are not in page order: 1 to 6 stand for the
/// sidebar's main block.
struct PageEntry {
    Page page;
    std::string_view name; ///< the case's own name
    std::string_view title;
    int digit;
};

inline constexpr std::array<PageEntry, 8> pages{{
    {Page::overview, "overview", "Overview", 1},
    {Page::sources, "sources", "All sources", 7},
    {Page::apps, "apps", "Apps", 2},
    {Page::projects, "projects", "Projects", 3},
    {Page::servers, "servers", "Servers", 4},
    {Page::storage, "storage", "Storage", 5},
    {Page::battery, "battery", "Battery", 8},
    {Page::hall, "hall", "Hall of Flame", 6},
}};

constexpr const PageEntry& entryOf(Page page) noexcept {
    return pages[static_cast<std::size_t>(page)];
}

/// Empty for a name that is no page's.
constexpr std::optional<Page> pageNamed(std::string_view name) noexcept {
    for (const PageEntry& entry : pages)
        if (entry.name == name) return entry.page;
    return std::nullopt;
}

/// What the lists are sorted by.
enum class SortOrder { cpu, memory, name };

inline constexpr std::array<std::string_view, 3> sortOrderNames{"cpu", "memory", "name"};

constexpr std::optional<SortOrder> sortOrderNamed(std::string_view name) noexcept {
    for (std::size_t i = 0; i < sortOrderNames.size(); ++i)
        if (sortOrderNames[i] == name) return static_cast<SortOrder>(i);
    return std::nullopt;
}

} // namespace varnet
