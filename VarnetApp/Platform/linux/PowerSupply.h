#pragma once

#include "VarnetCore/Battery/BatteryReading.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace varnet {

/// One power supply as the kernel publishes it: a battery, a mains adapter, a USB port. Drivers leave out
/// what they do not know, and some publish nonsense; a value that cannot be is empty here.
struct PowerSupply {
    enum class Kind { battery, adapter, other };
    enum class Status { unknown, discharging, charging, notCharging, full };
    enum class Health { unknown, good, worn, failed };

    Kind kind = Kind::other; ///< a battery only when it powers the machine and is in its bay
    Status status = Status::unknown;
    Health health = Health::unknown;
    std::optional<bool> online; ///< of an adapter

    // Units: µWh, µAh, µV, µA, µW, percent, tenths of a degree Celsius, seconds.
    std::optional<double> energyNow, energyFull, energyDesign;
    std::optional<double> chargeNow, chargeFull, chargeDesign;
    std::optional<double> voltageNow, voltageDesign, voltageMax;
    std::optional<double> currentNow, currentMax, powerNow, inputPowerLimit;
    std::optional<double> percent, cycles, temperature;
    std::optional<double> timeToEmpty, timeToFull;

    /// The files that are read of each.
    static const std::span<const std::string_view> files;

    /// Takes in what one of the files holds.
    void take(std::string_view file, std::string_view text);

    /// Whether anything at all is known of a battery.
    bool tellsAnything() const noexcept;

private:
    void takeWord(std::string_view file, std::string_view text);
    bool powersADevice_ = false; ///< a mouse, a headset
    bool isGone_ = false;        ///< an empty bay
};

/// All of them, turned into what a reading is parsed from.
struct PowerSupplies {
    BatteryDictionary power;
    BatteryDictionary registry;
    std::optional<double> adapterWatts;

    /// @param batteries at least one
    static PowerSupplies combine(std::span<const PowerSupply> batteries,
                                 std::span<const PowerSupply> adapters);
};

} // namespace varnet
