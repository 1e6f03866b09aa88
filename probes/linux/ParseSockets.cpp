#include "probes/linux/ParseSockets.h"

#include "probes/linux/ParseText.h"

#include <charconv>

namespace varnet::probes {

void parseNetTCP(std::string_view text, std::vector<Listener>& listeners) {
    std::string_view line;
    while (nextLine(text, line)) {
        // sl local_address rem_address st tx_queue:rx_queue tr:tm->when retrnsmt uid timeout inode
        nextWord(line);
        const std::string_view local = nextWord(line);
        nextWord(line);
        if (nextWord(line) != "0A") continue;
        for (int i = 0; i < 5; ++i)
            nextWord(line);
        const auto inode = parseNumber(nextWord(line));
        const std::size_t colon = local.rfind(':');
        if (!inode || *inode == 0 || colon == std::string_view::npos) continue;

        const std::string_view digits = local.substr(colon + 1);
        std::uint16_t port = 0;
        const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port, 16);
        if (error != std::errc{} || stop != digits.data() + digits.size() || port == 0) continue;
        listeners.push_back({*inode, port});
    }
}

std::optional<std::uint64_t> parseSocketLink(std::string_view link) noexcept {
    constexpr std::string_view prefix = "socket:[";
    if (!link.starts_with(prefix) || !link.ends_with(']')) return std::nullopt;
    return parseNumber(link.substr(prefix.size(), link.size() - prefix.size() - 1));
}

} // namespace varnet::probes
