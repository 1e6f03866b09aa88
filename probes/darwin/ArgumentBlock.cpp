#include "probes/darwin/ArgumentBlock.h"

#include <algorithm>
#include <cstring>

namespace varnet::probes {

namespace {

constexpr std::size_t smallestBlock = 5;       // bytes
constexpr std::uint32_t largestCount = 16'384; // a higher one, or one below zero, is no count

} // namespace

std::int32_t joinArguments(std::span<const char> block, std::span<char> text) noexcept {
    if (block.size() < smallestBlock || text.empty()) return -1;
    std::uint32_t count = 0;
    std::memcpy(&count, block.data(), sizeof count);
    if (count > largestCount) return -1;

    auto at = std::find(block.begin() + sizeof count, block.end(), '\0');
    at = std::find_if(at, block.end(), [](char byte) { return byte != '\0'; });
    std::size_t written = 0;
    for (std::uint32_t taken = 0; taken < count && at != block.end(); ++taken) {
        const auto end = std::find(at, block.end(), '\0');
        const auto length = static_cast<std::size_t>(end - at);
        if (end == block.end() || written + length + 2 >= text.size()) break;
        if (written > 0) text[written++] = '\t';
        std::copy(at, end, text.begin() + static_cast<std::ptrdiff_t>(written));
        written += length;
        at = end + 1;
    }
    text[written] = '\0';
    return 0;
}

} // namespace varnet::probes
