#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// Parsers of the sensors' small files, one value each. Pure and total.
namespace varnet::probes {

/// A whole number, signed, with nothing but blanks around it; empty for anything else.
std::optional<std::int64_t> parseSensorValue(std::string_view text) noexcept;

/// The number in a name such as "fan12_input" or "hwmon3"; empty when the name is another one.
std::optional<std::uint32_t> numberBetween(std::string_view name, std::string_view before,
                                           std::string_view after) noexcept;

/// What a thermal zone's trip point is for. Fans starting to turn (`active`) is no pressure.
enum class TripKind { other, passive, hot, critical };
TripKind parseTripKind(std::string_view text) noexcept;

/// Whether a cooling device of this type slows the processors or the graphics down. Others turn fans, or
/// merely tell how bright the screen is.
bool coolsByThrottling(std::string_view type) noexcept;

} // namespace varnet::probes
