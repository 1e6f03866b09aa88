#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// The few ways in which the kernel lays out its texts.
namespace varnet::probes {

/// Cuts the first line off the text. @return false at the end
bool nextLine(std::string_view& text, std::string_view& line) noexcept;

/// Cuts the first blank-separated word off the text; empty at the end.
std::string_view nextWord(std::string_view& text) noexcept;

/// A decimal number that fills the whole word; empty for anything else, too large ones included.
std::optional<std::uint64_t> parseNumber(std::string_view word) noexcept;

/// A figure such as "  1234 kB" in bytes.
std::optional<std::uint64_t> parseKilobytes(std::string_view value) noexcept;

} // namespace varnet::probes
