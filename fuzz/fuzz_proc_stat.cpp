#include "probes/linux/ParseProcess.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string_view>

#include "fuzz/Require.h"

using namespace varnet;

/// The name is the part of the text between its first and its last parenthesis, whatever stands there, and no
/// number leaves its range.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto stat = probes::parseProcStat(text);
    if (!stat) return 0;
    const char* const begin = stat->name.data();
    require(std::less_equal<>{}(text.data() + 1, begin));
    require(std::less_equal<>{}(begin + stat->name.size() + 1, text.data() + text.size()));
    require(begin[-1] == '(' && begin[stat->name.size()] == ')');
    require(std::string_view(text.data(), static_cast<std::size_t>(begin - 1 - text.data())).find('(') ==
            std::string_view::npos);
    require(text.find(')', static_cast<std::size_t>(begin - text.data()) + stat->name.size() + 1) ==
            std::string_view::npos);
    require(stat->pid >= 0 && stat->parent >= 0);
    // What readers make of them fits.
    require(stat->cpuTicks <= std::numeric_limits<std::uint64_t>::max() / 1'000'000'000);
    require(stat->startTicks <= std::numeric_limits<std::uint64_t>::max() / 1'000'000);
    return 0;
}
