#pragma once

#include <string_view>
#include <vector>

namespace varnet {

/// The outline of an icon as path data on a 20 by 20 grid, drawn inside 2.25 to 17.75 and meant to be stroked
/// 1.5 wide with round caps and joins. Empty for a name that no icon has.
std::string_view iconPathData(std::string_view name);

/// Every icon's name, sorted.
std::vector<std::string_view> iconNames();

} // namespace varnet
