#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace varnet {

/// Hues of the map. What they look like is the theme's business.
enum class MapTone { gray, blue, violet, green, red, orange, yellow, sky };

/// A tile of a map, and a row of its key.
struct DiskMapNode {
    std::string id;
    std::string title;
    std::string subtitle;
    std::uint64_t bytes = 0;
    bool partial = false;
    MapTone color = MapTone::gray;
    std::string symbol;         ///< name of an icon
    bool localizeTitle = false; ///< the title is a sentence of ours and no name
    bool localizeSubtitle = true;

    friend bool operator==(const DiskMapNode&, const DiskMapNode&) = default;
};

} // namespace varnet
