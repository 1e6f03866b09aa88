#include "probes/linux/ParseSensors.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>

namespace varnet::probes {

namespace {

std::string_view trimmed(std::string_view text) noexcept {
    constexpr std::string_view blank(" \t\r\n\0", 5);
    const std::size_t begin = text.find_first_not_of(blank);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blank) - begin + 1);
}

template <class Number>
std::optional<Number> wholeNumber(std::string_view word) noexcept {
    Number number = 0;
    const char* const end = std::to_address(word.end());
    const auto [stop, error] = std::from_chars(std::to_address(word.begin()), end, number);
    if (word.empty() || error != std::errc{} || stop != end) return std::nullopt;
    return number;
}

} // namespace

std::optional<std::int64_t> parseSensorValue(std::string_view text) noexcept {
    return wholeNumber<std::int64_t>(trimmed(text));
}

std::optional<std::uint32_t> numberBetween(std::string_view name, std::string_view before,
                                           std::string_view after) noexcept {
    if (name.size() <= before.size() + after.size() || !name.starts_with(before) || !name.ends_with(after)) {
        return std::nullopt;
    }
    name.remove_prefix(before.size());
    name.remove_suffix(after.size());
    return wholeNumber<std::uint32_t>(name);
}

TripKind parseTripKind(std::string_view text) noexcept {
    text = trimmed(text);
    if (text == "passive") return TripKind::passive;
    if (text == "hot") return TripKind::hot;
    if (text == "critical") return TripKind::critical;
    return TripKind::other;
}

bool coolsByThrottling(std::string_view type) noexcept {
    constexpr std::array<std::string_view, 8> beginnings{"Processor", "cpufreq",         "thermal-cpufreq",
                                                         "cpu-idle",  "thermal-idle",    "thermal-devfreq",
                                                         "devfreq",   "intel_powerclamp"};
    return std::ranges::any_of(beginnings, [type = trimmed(type)](std::string_view beginning) {
        return type.starts_with(beginning);
    });
}

} // namespace varnet::probes
