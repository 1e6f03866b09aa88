#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace varnet {

/// A universally unique identifier. All zero by default.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// A new random one (version 4).
    static Uuid random();
    /// Reads the 8-4-4-4-12 form in either case; empty for anything else.
    static std::optional<Uuid> fromText(std::string_view text) noexcept;
    /// The 8-4-4-4-12 form in upper case.
    std::string text() const;

    friend auto operator<=>(const Uuid&, const Uuid&) = default;
};

} // namespace varnet
