#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace varnet::probes {

/// The numbers in those names of a folder that begin and end so, ascending; none for a folder that cannot be
/// read.
std::vector<std::uint32_t> numberedEntries(const std::string& folder, std::string_view before,
                                           std::string_view after = {});

} // namespace varnet::probes
