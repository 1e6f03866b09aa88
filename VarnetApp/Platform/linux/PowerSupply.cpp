#include "VarnetApp/Platform/linux/PowerSupply.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>

namespace varnet {

namespace {

using Status = PowerSupply::Status;
using Health = PowerSupply::Health;
using Field = std::optional<double> PowerSupply::*;

/// A file that holds a number, where it goes, and between which values it is believed.
struct NumberFile {
    std::string_view name;
    Field field;
    double low;
    double high;
};

constexpr double huge = 1e9;                            ///< a thousand watt-hours or ampere-hours
constexpr double strongest = 500e6;                     ///< µW and µA
constexpr double leastVoltage = 1e6, mostVoltage = 3e7; ///< µV

constexpr std::array numberFiles{
    NumberFile{"energy_now", &PowerSupply::energyNow, 0, huge},
    NumberFile{"energy_full", &PowerSupply::energyFull, 1, huge},
    NumberFile{"energy_full_design", &PowerSupply::energyDesign, 1, huge},
    NumberFile{"charge_now", &PowerSupply::chargeNow, 0, huge},
    NumberFile{"charge_full", &PowerSupply::chargeFull, 1, huge},
    NumberFile{"charge_full_design", &PowerSupply::chargeDesign, 1, huge},
    NumberFile{"voltage_now", &PowerSupply::voltageNow, leastVoltage, mostVoltage},
    NumberFile{"voltage_min_design", &PowerSupply::voltageDesign, leastVoltage, mostVoltage},
    NumberFile{"voltage_max", &PowerSupply::voltageMax, leastVoltage, 6e7},
    NumberFile{"current_now", &PowerSupply::currentNow, -strongest, strongest},
    NumberFile{"current_max", &PowerSupply::currentMax, 1, strongest},
    NumberFile{"power_now", &PowerSupply::powerNow, -strongest, strongest},
    NumberFile{"input_power_limit", &PowerSupply::inputPowerLimit, 1, 1e9},
    NumberFile{"capacity", &PowerSupply::percent, 0, 100},
    // Drivers that cannot count say 0.
    NumberFile{"cycle_count", &PowerSupply::cycles, 1, 100'000},
    NumberFile{"temp", &PowerSupply::temperature, 0, 800},
    NumberFile{"time_to_empty_avg", &PowerSupply::timeToEmpty, 60, 172'800},
    NumberFile{"time_to_empty_now", &PowerSupply::timeToEmpty, 60, 172'800},
    NumberFile{"time_to_full_avg", &PowerSupply::timeToFull, 60, 172'800},
    NumberFile{"time_to_full_now", &PowerSupply::timeToFull, 60, 172'800},
};
constexpr std::array<std::string_view, 6> wordFiles{"type", "scope", "present", "status", "health", "online"};

constexpr auto allFiles = [] {
    std::array<std::string_view, wordFiles.size() + numberFiles.size()> names;
    std::size_t count = 0;
    for (const std::string_view name : wordFiles)
        names[count++] = name;
    for (const NumberFile& file : numberFiles)
        names[count++] = file.name;
    return names;
}();

std::string_view trimmed(std::string_view text) noexcept {
    constexpr std::string_view blank(" \t\r\n\0", 5);
    const std::size_t begin = text.find_first_not_of(blank);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blank) - begin + 1);
}

std::optional<double> wholeNumber(std::string_view text) noexcept {
    std::int64_t number = 0;
    const char* const end = std::to_address(text.end());
    const auto [stop, error] = std::from_chars(std::to_address(text.begin()), end, number);
    if (text.empty() || error != std::errc{} || stop != end) return std::nullopt;
    return static_cast<double>(number);
}

Status statusOf(std::string_view word) noexcept {
    if (word == "Discharging") return Status::discharging;
    if (word == "Charging") return Status::charging;
    if (word == "Not charging") return Status::notCharging;
    if (word == "Full") return Status::full;
    return Status::unknown;
}

/// Being warm or cold is no fault of the battery's and says nothing about its wear.
Health healthOf(std::string_view word) noexcept {
    if (word == "Good") return Health::good;
    if (word == "Dead") return Health::worn;
    if (word == "Unspecified failure") return Health::failed;
    return Health::unknown;
}

/// For turning energy into charge and back: what the battery is built for, else what it has now.
std::optional<double> nominalVoltage(const PowerSupply& battery) {
    return battery.voltageDesign ? battery.voltageDesign : battery.voltageNow;
}

/// mAh of one battery.
std::optional<double> milliampereHours(const PowerSupply& battery, Field charge, Field energy) {
    if (battery.*charge) return *(battery.*charge) / 1000;
    const auto voltage = nominalVoltage(battery);
    if (!(battery.*energy) || !voltage) return std::nullopt;
    return *(battery.*energy) / *voltage * 1000;
}

/// Of several batteries, in ampere-hours at the first one's voltage, so that energy adds up. Unknown when one
/// of them is.
std::optional<double> capacity(std::span<const PowerSupply> batteries, Field charge, Field energy) {
    const auto reference = nominalVoltage(batteries.front());
    double sum = 0;
    for (const PowerSupply& battery : batteries) {
        const auto own = milliampereHours(battery, charge, energy);
        if (!own) return std::nullopt;
        const auto voltage = nominalVoltage(battery);
        sum += reference && voltage ? *own * (*voltage / *reference) : *own;
    }
    return sum;
}

/// Watts of one battery, negative while it discharges. Many drivers tell no sign, so the status does.
std::optional<double> watts(const PowerSupply& battery) {
    std::optional<double> power;
    if (battery.powerNow) power = *battery.powerNow / 1e6;
    // A discharge without power is a driver that does not measure it.
    if (power.value_or(0) == 0 && battery.currentNow) {
        const auto voltage = battery.voltageNow ? battery.voltageNow : battery.voltageDesign;
        if (voltage) power = *battery.currentNow * *voltage / 1e12;
    }
    if (!power) return std::nullopt;
    if (battery.status == Status::discharging)
        return *power != 0 ? std::optional(-std::abs(*power)) : std::nullopt;
    return battery.status == Status::charging ? std::abs(*power) : *power;
}

/// Unknown when a battery that works does not tell; one that rests adds nothing.
std::optional<double> totalWatts(std::span<const PowerSupply> batteries, bool onBattery) {
    std::optional<double> sum;
    for (const PowerSupply& battery : batteries) {
        const auto own = watts(battery);
        const bool works = battery.status == Status::discharging || battery.status == Status::charging;
        if (!own && works) return std::nullopt;
        if (own) sum = sum.value_or(0) + *own;
    }
    // A battery of unknown status that alone powers the machine.
    const bool silent = std::ranges::none_of(
        batteries, [](const PowerSupply& battery) { return battery.status == Status::discharging; });
    if (sum && onBattery && silent) sum = -std::abs(*sum);
    return sum;
}

bool any(std::span<const PowerSupply> batteries, Status status) {
    return std::ranges::find(batteries, status, &PowerSupply::status) != batteries.end();
}

/// By the batteries' word; where they have none, by whether every adapter says that it is unplugged.
bool isOnBattery(std::span<const PowerSupply> batteries, std::span<const PowerSupply> adapters) {
    if (any(batteries, Status::discharging)) return true;
    const bool allSilent = std::ranges::all_of(
        batteries, [](const PowerSupply& battery) { return battery.status == Status::unknown; });
    return allSilent && !adapters.empty() &&
           std::ranges::all_of(adapters, [](const PowerSupply& adapter) { return adapter.online == false; });
}

/// One that rests beside a full one does not matter.
bool isCharged(std::span<const PowerSupply> batteries) {
    return any(batteries, Status::full) && std::ranges::all_of(batteries, [](const PowerSupply& battery) {
               return battery.status == Status::full || battery.status == Status::unknown;
           });
}

struct Level {
    double now;
    double full;
};
/// How full they are. Drivers may go a little beyond full, which is full.
std::optional<Level> level(std::span<const PowerSupply> batteries) {
    constexpr double tolerance = 1.1;
    const auto now = capacity(batteries, &PowerSupply::chargeNow, &PowerSupply::energyNow);
    const auto full = capacity(batteries, &PowerSupply::chargeFull, &PowerSupply::energyFull);
    if (now && full && *full >= 1 && *now <= *full * tolerance) return Level{std::min(*now, *full), *full};
    double percent = 0;
    for (const PowerSupply& battery : batteries) {
        if (!battery.percent) return std::nullopt;
        percent += *battery.percent;
    }
    return Level{percent / static_cast<double>(batteries.size()), 100};
}

/// Watts that an adapter may give, where it tells.
std::optional<double> rating(const PowerSupply& adapter) {
    if (adapter.inputPowerLimit) return *adapter.inputPowerLimit / 1e6;
    const auto voltage = adapter.voltageNow ? adapter.voltageNow : adapter.voltageMax;
    if (!adapter.currentMax || !voltage) return std::nullopt;
    return *adapter.currentMax * *voltage / 1e12;
}

void put(BatteryDictionary& dictionary, const char* key, std::optional<double> value) {
    if (value) dictionary[key].value = *value;
}

std::optional<double> largest(std::span<const PowerSupply> supplies, Field field) {
    std::optional<double> result;
    for (const PowerSupply& supply : supplies)
        if (supply.*field) result = std::max(result.value_or(*(supply.*field)), *(supply.*field));
    return result;
}

} // namespace

const std::span<const std::string_view> PowerSupply::files = allFiles;

void PowerSupply::take(std::string_view file, std::string_view text) {
    text = trimmed(text);
    for (const NumberFile& known : numberFiles) {
        if (known.name != file) continue;
        const auto number = wholeNumber(text);
        if (number && *number >= known.low && *number <= known.high) this->*known.field = number;
        return;
    }
    takeWord(file, text);
}

void PowerSupply::takeWord(std::string_view file, std::string_view text) {
    if (file == "type") {
        if (text == "Battery") kind = Kind::battery;
        if (text == "Mains" || text.starts_with("USB") || text == "Wireless") kind = Kind::adapter;
    } else if (file == "scope") {
        powersADevice_ = text == "Device";
    } else if (file == "present") {
        isGone_ = text == "0";
    } else if (file == "status") {
        status = statusOf(text);
    } else if (file == "health") {
        health = healthOf(text);
    } else if (file == "online") {
        // 2 is a port that gives what it can choose from.
        if (const auto number = wholeNumber(text)) online = *number > 0;
    }
    if (powersADevice_ || isGone_) kind = Kind::other;
}

bool PowerSupply::tellsAnything() const noexcept {
    return status != Status::unknown || percent || energyNow || chargeNow || energyFull || chargeFull ||
           voltageNow;
}

PowerSupplies PowerSupplies::combine(std::span<const PowerSupply> batteries,
                                     std::span<const PowerSupply> adapters) {
    PowerSupplies result;
    const PowerSupply& first = batteries.front();
    const bool onBattery = isOnBattery(batteries, adapters);
    const auto held = level(batteries);
    const auto sum = totalWatts(batteries, onBattery);

    BatteryDictionary& power = result.power;
    power["Type"].value = "InternalBattery";
    power["Power Source State"].value = onBattery ? "Battery Power" : "AC Power";
    power["Is Charging"].value = !onBattery && any(batteries, PowerSupply::Status::charging);
    power["Is Charged"].value = isCharged(batteries);
    if (held) {
        put(power, "Current Capacity", held->now / held->full * 100);
        put(power, "Max Capacity", 100);
    }
    if (std::ranges::find(batteries, Health::worn, &PowerSupply::health) != batteries.end()) {
        power["BatteryHealth"].value = "Poor";
    } else if (std::ranges::all_of(batteries, [](const auto& b) { return b.health == Health::good; })) {
        power["BatteryHealth"].value = "Good";
    }
    if (std::ranges::find(batteries, Health::failed, &PowerSupply::health) != batteries.end()) {
        power["BatteryHealthCondition"].value = "Check Battery";
    }

    BatteryDictionary& registry = result.registry;
    const auto full = capacity(batteries, &PowerSupply::chargeFull, &PowerSupply::energyFull);
    put(registry, "AppleRawMaxCapacity", full);
    put(registry, "DesignCapacity",
        capacity(batteries, &PowerSupply::chargeDesign, &PowerSupply::energyDesign));
    put(registry, "CycleCount", largest(batteries, &PowerSupply::cycles));
    if (const auto temperature = largest(batteries, &PowerSupply::temperature)) {
        put(registry, "Temperature", *temperature * 10);
    }
    const auto voltage = first.voltageNow ? first.voltageNow : nominalVoltage(first);
    if (voltage) put(registry, "Voltage", *voltage / 1000);
    if (sum && voltage) put(registry, "Amperage", *sum * 1e9 / *voltage);

    // What a driver says is of its own battery alone.
    const bool alone = batteries.size() == 1;
    // 0 stands for what is not known: the compiler cannot follow an optional through what comes.
    double toEmpty = alone ? first.timeToEmpty.value_or(0) : 0;
    double toFull = alone ? first.timeToFull.value_or(0) : 0;
    const auto nominal = nominalVoltage(first);
    if (held && full && sum && *sum != 0 && nominal) {
        const double wattHours = *full * *nominal / 1e9;
        const double share = held->now / held->full;
        if (toEmpty <= 0 && *sum < 0) toEmpty = wattHours * share / -*sum * 3600;
        if (toFull <= 0 && *sum > 0) toFull = wattHours * (1 - share) / *sum * 3600;
    }
    if (toEmpty > 0) put(power, "Time to Empty", toEmpty / 60);
    if (toFull > 0) put(power, "Time to Full Charge", toFull / 60);

    for (const PowerSupply& adapter : adapters) {
        if (adapter.online != true) continue;
        const auto own = rating(adapter);
        if (own && *own > result.adapterWatts.value_or(0)) result.adapterWatts = own;
    }
    return result;
}

} // namespace varnet
