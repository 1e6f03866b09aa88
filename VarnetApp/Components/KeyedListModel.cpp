#include "VarnetApp/Components/KeyedListModel.h"

namespace varnet {

std::vector<bool> longestAscendingRun(const std::vector<std::size_t>& numbers) {
    constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::vector<std::size_t> tails; // index of the least number that ends a run of each length
    std::vector<std::size_t> before(numbers.size(), none);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto place =
            std::ranges::lower_bound(tails, numbers[i], {}, [&](std::size_t tail) { return numbers[tail]; });
        if (place != tails.begin()) before[i] = *std::prev(place);
        if (place == tails.end()) {
            tails.push_back(i);
        } else {
            *place = i;
        }
    }
    std::vector<bool> inRun(numbers.size(), false);
    for (std::size_t i = tails.empty() ? none : tails.back(); i != none; i = before[i])
        inRun[i] = true;
    return inRun;
}

} // namespace varnet
