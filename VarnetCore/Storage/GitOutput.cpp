#include "VarnetCore/Storage/GitOutput.h"

#include <algorithm>
#include <charconv>
#include <memory>

namespace varnet::GitOutput {

std::vector<std::string> worktrees(std::string_view output) {
    constexpr std::string_view key = "worktree ";
    std::vector<std::string> folders;
    while (!output.empty()) {
        std::string_view field = output.substr(0, output.find('\0'));
        output.remove_prefix(std::min(field.size() + 1, output.size()));
        if (!field.starts_with(key)) continue;
        field.remove_prefix(key.size());
        if (field.starts_with('/')) folders.emplace_back(field);
    }
    return folders;
}

std::optional<std::int64_t> count(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) return std::nullopt;
    }
    std::int64_t number = 0;
    const char* const end = std::to_address(text.end());
    const auto [stop, error] = std::from_chars(std::to_address(text.begin()), end, number);
    return error == std::errc{} && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace varnet::GitOutput
