#pragma once

#include "VarnetCore/Base/Date.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace varnet {

enum class BatteryAvailability {
    available,
    unavailable, ///< there may be a battery, but it could not be read
    absent,      ///< this machine has none
};
enum class BatteryState { onBattery, charging, charged, pluggedIn };
enum class BatteryCondition { normal, service, unknown };

/// The cases' own names.
std::string_view rawValue(BatteryAvailability availability) noexcept;
std::string_view rawValue(BatteryState state) noexcept;
std::string_view rawValue(BatteryCondition condition) noexcept;
/// Empty for a name that is no state's.
std::optional<BatteryState> batteryState(std::string_view name) noexcept;

/// One value of a system's loose dictionaries. A flag is no number and a number no flag.
struct BatteryValue;
using BatteryDictionary = std::map<std::string, BatteryValue, std::less<>>;
struct BatteryValue {
    std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, std::string,
                 std::shared_ptr<const BatteryDictionary>>
        value;
};

/// The battery at one moment. A reading that is not available is plugged in, of unknown condition, and empty.
struct BatteryReading {
    Date date;
    BatteryAvailability availability = BatteryAvailability::unavailable;
    BatteryState state = BatteryState::pluggedIn;
    std::optional<double> charge; ///< percent, 0 to 100
    std::optional<double> health; ///< percent of the design capacity, at most 100
    BatteryCondition condition = BatteryCondition::unknown;
    std::optional<int> cycles;
    std::optional<double> fullCapacity;     ///< mAh
    std::optional<double> designCapacity;   ///< mAh
    std::optional<double> watts;            ///< negative while discharging
    std::optional<double> temperature;      ///< degrees Celsius
    std::optional<double> minutesRemaining; ///< on battery only
    std::optional<double> minutesToFull;    ///< while charging only
    std::optional<double> adapterWatts;     ///< rating of the power adapter
    bool lowPowerMode = false;

    /// One that could not be made, and why.
    static BatteryReading missing(BatteryAvailability why, Date date);

    /// Checks what the system says. A value out of range counts as absent; the rest survives.
    /// @param power the power source's own dictionary
    /// @param registry the battery driver's
    /// @return always available
    static BatteryReading parse(const BatteryDictionary& power, const BatteryDictionary& registry,
                                std::optional<double> adapterWatts, bool lowPowerMode, Date date);

    friend bool operator==(const BatteryReading&, const BatteryReading&) = default;
};

} // namespace varnet
