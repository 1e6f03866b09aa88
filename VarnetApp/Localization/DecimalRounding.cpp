#include "VarnetApp/Localization/DecimalRounding.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

namespace varnet {

double roundedHalfEven(double value, int decimals) {
    // The longest double in plain digits has some 330 of them.
    std::array<char, 512> text{};
    const auto written =
        std::to_chars(text.data(), text.data() + text.size(), std::abs(value), std::chars_format::fixed);
    const std::string_view digits(text.data(), static_cast<std::size_t>(written.ptr - text.data()));
    const std::size_t point = digits.find('.');
    if (point == std::string_view::npos) return value;
    const std::size_t kept = point + 1 + static_cast<std::size_t>(decimals);
    if (kept >= digits.size()) return value;
    const std::string_view dropped = digits.substr(kept);
    const bool half = dropped.front() == '5' && dropped.find_first_not_of('0', 1) == std::string_view::npos;
    const char last = decimals == 0 ? digits[point - 1] : digits[kept - 1];
    const bool up = dropped.front() > '5' || (dropped.front() == '5' && (!half || (last - '0') % 2 == 1));
    const double scale = std::pow(10.0, decimals);
    double whole = 0;
    std::string remaining(digits.substr(0, point));
    remaining += digits.substr(point + 1, static_cast<std::size_t>(decimals));
    std::from_chars(remaining.data(), remaining.data() + remaining.size(), whole);
    return std::copysign((whole + (up ? 1 : 0)) / scale, value);
}

} // namespace varnet
