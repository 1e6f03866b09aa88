#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace varnet {

/// Whether a machine of this model is known to have no fans at all. A failed reading or a count of zero is
/// never taken as proof of that.
inline bool isConfirmedFanless(std::string_view model) {
    constexpr std::array<std::string_view, 7> models{"MacBookAir10,1", "Mac14,2",  "Mac14,15", "Mac15,12",
                                                     "Mac15,13",       "Mac16,12", "Mac16,13"};
    return std::ranges::find(models, model) != models.end();
}

} // namespace varnet
