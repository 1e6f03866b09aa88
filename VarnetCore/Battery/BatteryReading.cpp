#include "VarnetCore/Battery/BatteryReading.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <initializer_list>

namespace varnet {

namespace {

constexpr std::array<std::string_view, 3> availabilityNames{"available", "unavailable", "absent"};
constexpr std::array<std::string_view, 4> stateNames{"onBattery", "charging", "charged", "pluggedIn"};
constexpr std::array<std::string_view, 3> conditionNames{"normal", "service", "unknown"};

/// Capacities further apart than this are not of one battery.
constexpr double believableHealth = 1.2;
constexpr double strongestCurrent = 100'000; ///< milliamperes
constexpr double strongestPower = 500;       ///< watts
constexpr double strongestAdapter = 1000;    ///< watts, not included

struct Range {
    double low;
    double high;
};
constexpr Range charges{0, 100'000};
constexpr Range maximumCharges{1, 100'000};
constexpr Range designCapacities{100, 100'000};
constexpr Range fullCapacities{101, 100'000};
constexpr Range voltages{1000, 30'000}; ///< millivolts
constexpr Range cycleCounts{0, 100'000};
constexpr Range temperatures{0, 8000}; ///< hundredths of a degree
constexpr Range failures{0, 4'294'967'295.0};
constexpr Range minutes{1, 2880};

const BatteryValue* find(const BatteryDictionary& dictionary, std::string_view key) {
    const auto found = dictionary.find(key);
    return found == dictionary.end() ? nullptr : &found->second;
}

std::optional<double> anyNumber(const BatteryValue* value) {
    if (!value) return std::nullopt;
    if (const auto* number = std::get_if<double>(&value->value)) return *number;
    if (const auto* number = std::get_if<std::int64_t>(&value->value)) return static_cast<double>(*number);
    if (const auto* number = std::get_if<std::uint64_t>(&value->value)) return static_cast<double>(*number);
    return std::nullopt;
}

std::optional<double> number(const BatteryDictionary& dictionary, std::string_view key, Range range) {
    const auto value = anyNumber(find(dictionary, key));
    const bool fits = value && std::isfinite(*value) && *value >= range.low && *value <= range.high;
    return fits ? value : std::nullopt;
}

std::optional<bool> flag(const BatteryDictionary& dictionary, std::string_view key) {
    const BatteryValue* const value = find(dictionary, key);
    const bool* const held = value ? std::get_if<bool>(&value->value) : nullptr;
    return held ? std::optional(*held) : std::nullopt;
}

std::string_view text(const BatteryDictionary& dictionary, std::string_view key) {
    const BatteryValue* const value = find(dictionary, key);
    const std::string* const held = value ? std::get_if<std::string>(&value->value) : nullptr;
    return held ? std::string_view(*held) : std::string_view();
}

const BatteryDictionary& nested(const BatteryDictionary& dictionary, std::string_view key) {
    static const BatteryDictionary none;
    const BatteryValue* const value = find(dictionary, key);
    const auto* const held =
        value ? std::get_if<std::shared_ptr<const BatteryDictionary>>(&value->value) : nullptr;
    return held && *held ? **held : none;
}

struct Source {
    const BatteryDictionary& dictionary;
    std::string_view key;
};

std::optional<double> firstOf(std::initializer_list<Source> sources, Range range) {
    for (const Source& source : sources)
        if (const auto value = number(source.dictionary, source.key, range)) return value;
    return std::nullopt;
}

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> texts) {
    return std::ranges::find(texts, text) != texts.end();
}

std::optional<double> chargeOf(const BatteryDictionary& power) {
    const auto current = number(power, "Current Capacity", charges);
    const auto maximum = number(power, "Max Capacity", maximumCharges);
    if (!current || !maximum || *current > *maximum) return std::nullopt;
    return *current * 100 / *maximum;
}

std::optional<double> healthOf(std::optional<double> full, std::optional<double> design) {
    if (!full || !design || *full / *design > believableHealth) return std::nullopt;
    return std::min(*full * 100 / *design, 100.0);
}

BatteryState stateOf(const BatteryDictionary& power, const BatteryDictionary& registry) {
    if (text(power, "Power Source State") == "Battery Power") return BatteryState::onBattery;
    auto charging = flag(power, "Is Charging");
    if (!charging) charging = flag(registry, "IsCharging");
    if (charging.value_or(false)) return BatteryState::charging;
    auto charged = flag(power, "Is Charged");
    if (!charged) charged = flag(registry, "FullyCharged");
    return charged.value_or(false) ? BatteryState::charged : BatteryState::pluggedIn;
}

BatteryCondition conditionOf(const BatteryDictionary& power, const BatteryDictionary& registry) {
    const std::string_view health = text(power, "BatteryHealth");
    const std::string_view condition = text(power, "BatteryHealthCondition");
    if (isOneOf(health, {"Poor", "Check Battery", "Service Recommended"}) ||
        isOneOf(condition, {"Check Battery", "Permanent Battery Failure"}) ||
        number(registry, "PermanentFailureStatus", failures).value_or(0) > 0)
        return BatteryCondition::service;
    return isOneOf(health, {"Good", "Normal"}) ? BatteryCondition::normal : BatteryCondition::unknown;
}

/// Milliamperes. A negative current may come as the huge unsigned number with the same bits.
std::optional<double> amperageOf(const BatteryDictionary& registry) {
    const BatteryValue* const value = find(registry, "Amperage");
    auto current = anyNumber(value);
    if (!current) return std::nullopt;
    if (*current > 0x1p63) {
        if (const auto* bits = std::get_if<std::uint64_t>(&value->value))
            current = static_cast<double>(static_cast<std::int64_t>(*bits));
    }
    const bool fits = std::isfinite(*current) && std::abs(*current) <= strongestCurrent;
    return fits ? current : std::nullopt;
}

std::optional<double> wattsOf(const BatteryDictionary& registry) {
    const auto amperage = amperageOf(registry);
    const auto voltage = number(registry, "Voltage", voltages);
    if (!amperage || !voltage) return std::nullopt;
    const double watts = *amperage * *voltage / 1'000'000;
    return std::abs(watts) <= strongestPower ? std::optional(watts) : std::nullopt;
}

} // namespace

std::string_view rawValue(BatteryAvailability availability) noexcept {
    return availabilityNames[static_cast<std::size_t>(availability)];
}

std::string_view rawValue(BatteryState state) noexcept {
    return stateNames[static_cast<std::size_t>(state)];
}

std::string_view rawValue(BatteryCondition condition) noexcept {
    return conditionNames[static_cast<std::size_t>(condition)];
}

std::optional<BatteryState> batteryState(std::string_view name) noexcept {
    const auto found = std::ranges::find(stateNames, name);
    if (found == stateNames.end()) return std::nullopt;
    return static_cast<BatteryState>(found - stateNames.begin());
}

BatteryReading BatteryReading::missing(BatteryAvailability why, Date date) {
    BatteryReading reading;
    reading.availability = why;
    reading.date = date;
    return reading;
}

BatteryReading BatteryReading::parse(const BatteryDictionary& power, const BatteryDictionary& registry,
                                     std::optional<double> adapterWatts, bool lowPowerMode, Date date) {
    const BatteryDictionary& data = nested(registry, "BatteryData");
    BatteryReading reading;
    reading.date = date;
    reading.availability = BatteryAvailability::available;
    reading.state = stateOf(power, registry);
    reading.charge = chargeOf(power);
    reading.designCapacity =
        firstOf({{registry, "DesignCapacity"}, {data, "DesignCapacity"}}, designCapacities);
    reading.fullCapacity = firstOf({{registry, "AppleRawMaxCapacity"},
                                    {data, "FullChargeCapacity"},
                                    {registry, "NominalChargeCapacity"},
                                    {data, "NominalChargeCapacity"},
                                    {registry, "MaxCapacity"}},
                                   fullCapacities);
    reading.health = healthOf(reading.fullCapacity, reading.designCapacity);
    reading.condition = conditionOf(power, registry);
    if (const auto cycles = number(registry, "CycleCount", cycleCounts))
        reading.cycles = static_cast<int>(*cycles);
    reading.watts = wattsOf(registry);
    if (const auto hundredths = number(registry, "Temperature", temperatures))
        reading.temperature = *hundredths / 100;
    if (reading.state == BatteryState::onBattery)
        reading.minutesRemaining = number(power, "Time to Empty", minutes);
    if (reading.state == BatteryState::charging)
        reading.minutesToFull = number(power, "Time to Full Charge", minutes);
    if (adapterWatts && std::isfinite(*adapterWatts) && *adapterWatts > 0 && *adapterWatts < strongestAdapter)
        reading.adapterWatts = adapterWatts;
    reading.lowPowerMode = lowPowerMode;
    return reading;
}

} // namespace varnet
