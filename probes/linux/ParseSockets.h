#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

/// Parsers of socket tables. Pure and total.
namespace varnet::probes {

/// A TCP socket that listens.
struct Listener {
    std::uint64_t inode = 0; ///< the socket's number, as its descriptors name it
    std::uint16_t port = 0;

    friend auto operator<=>(const Listener&, const Listener&) = default;
};

/// Appends the listening sockets of a /proc/net/tcp or tcp6 table. Lines that make no sense are skipped.
void parseNetTCP(std::string_view text, std::vector<Listener>& listeners);

/// The number in "socket:[1234]", what a descriptor's link reads for a socket; empty for any other link.
std::optional<std::uint64_t> parseSocketLink(std::string_view link) noexcept;

} // namespace varnet::probes
