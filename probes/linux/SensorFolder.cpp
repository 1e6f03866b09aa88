#include "probes/linux/SensorFolder.h"

#include "probes/linux/ParseSensors.h"

#include <dirent.h>

#include <algorithm>
#include <memory>

namespace varnet::probes {

std::vector<std::uint32_t> numberedEntries(const std::string& folder, std::string_view before,
                                           std::string_view after) {
    std::vector<std::uint32_t> numbers;
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.c_str()), closedir);
    if (!listing) return numbers;
    while (const dirent* const entry = readdir(listing.get())) {
        if (const auto number = numberBetween(entry->d_name, before, after)) numbers.push_back(*number);
    }
    std::ranges::sort(numbers);
    return numbers;
}

} // namespace varnet::probes
