#include "probes/linux/ParseText.h"

#include <charconv>
#include <limits>
#include <memory>

namespace varnet::probes {

bool nextLine(std::string_view& text, std::string_view& line) noexcept {
    if (text.empty()) return false;
    const std::size_t end = text.find('\n');
    line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return true;
}

std::string_view nextWord(std::string_view& text) noexcept {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) {
        text = {};
        return {};
    }
    text.remove_prefix(begin);
    const std::size_t end = text.find_first_of(" \t");
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(word.size());
    return word;
}

std::optional<std::uint64_t> parseNumber(std::string_view word) noexcept {
    std::uint64_t number = 0;
    const char* const end = std::to_address(word.end());
    const auto [stop, error] = std::from_chars(std::to_address(word.begin()), end, number);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return number;
}

std::optional<std::uint64_t> parseKilobytes(std::string_view value) noexcept {
    const auto number = parseNumber(nextWord(value));
    if (!number || nextWord(value) != "kB") return std::nullopt;
    if (*number > std::numeric_limits<std::uint64_t>::max() / 1024) return std::nullopt;
    return *number * 1024;
}

} // namespace varnet::probes
