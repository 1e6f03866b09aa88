#include "VarnetCore/Base/Display.h"

#include <fmt/format.h>

#include <cstdint>

namespace varnet::Display {

std::string duration(Date date, Date now) {
    constexpr double longest = 1e15; // still a whole number of seconds in a double
    const double span = now - date;
    // Also for a span that is no number.
    const auto seconds = span > 0 ? static_cast<std::int64_t>(span < longest ? span : longest) : 0;
    const std::int64_t minutes = seconds / 60;
    if (seconds < 3600) return fmt::format("{}m", minutes);
    return fmt::format("{}h {}m", minutes / 60, minutes % 60);
}

} // namespace varnet::Display
