#include "probes/linux/ParseProcess.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"

using namespace varnet;

/// The first byte tells the size of the buffer and whether the block was cut. What comes back lies within the
/// buffer, ends with a NUL, and is made of the block's first arguments, whole and in their order.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t room = data[0] & 0x7fU;
    const bool cut = (data[0] & 0x80U) != 0;
    const std::string_view block(reinterpret_cast<const char*>(data) + 1, size - 1);
    // Exactly as large as is claimed, so that a byte too many is seen.
    std::vector<char> buffer(room, '#');
    const auto length = probes::joinArguments(block, cut, buffer.data(), room);
    if (!length) return 0;
    require(*length < room && buffer[*length] == '\0');
    const std::string_view text(buffer.data(), *length);
    require(text.find('\0') == text.npos);
    if (text.empty()) return 0;

    // The block's arguments behind its leading empty ones, joined without any limit, begin with that text,
    // and where the text ends an argument ends.
    std::string all(block.substr(std::min(block.find_first_not_of('\0'), block.size())));
    const bool endsWithin = all.size() > text.size() && all[text.size()] != '\0';
    std::ranges::replace(all, '\0', '\t');
    require(all.starts_with(text));
    require(!endsWithin);
    return 0;
}
