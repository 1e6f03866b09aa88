#include "tests/VarnetApp/Platform/BatteryMachines.h"

namespace varnet {
namespace {

using Files = BatteryMachine::Files;
using enum BatteryAvailability;
using enum BatteryState;

BatteryReading reading(BatteryState state, std::optional<double> charge) {
    BatteryReading result = BatteryReading::missing(available, BatteryMachine::now);
    result.state = state;
    result.charge = charge;
    return result;
}

Files with(Files files, const Files& more) {
    for (const auto& [name, text] : more)
        files[name] = text;
    return files;
}

const Files energyLaptop{
    {"AC/type", "Mains\n"},
    {"AC/online", "0\n"},
    {"BAT0/type", "Battery\n"},
    {"BAT0/present", "1\n"},
    {"BAT0/status", "Discharging\n"},
    {"BAT0/capacity", "60\n"},
    {"BAT0/cycle_count", "212\n"},
    {"BAT0/voltage_min_design", "11400000\n"},
    {"BAT0/voltage_now", "11800000\n"},
    {"BAT0/power_now", "12000000\n"},
    {"BAT0/energy_now", "24000000\n"},
    {"BAT0/energy_full", "40000000\n"},
    {"BAT0/energy_full_design", "50000000\n"},
};

const Files chargeLaptop{
    {"ADP1/type", "Mains\n"},
    {"ADP1/online", "1\n"},
    {"BAT1/type", "Battery\n"},
    {"BAT1/scope", "System\n"},
    {"BAT1/status", "Charging\n"},
    {"BAT1/health", "Good\n"},
    {"BAT1/temp", "312\n"},
    {"BAT1/voltage_min_design", "7600000\n"},
    {"BAT1/voltage_now", "8000000\n"},
    {"BAT1/current_now", "1500000\n"},
    {"BAT1/charge_now", "3000000\n"},
    {"BAT1/charge_full", "4500000\n"},
    {"BAT1/charge_full_design", "5000000\n"},
    {"BAT1/time_to_full_now", "4800\n"},
    {"usbc/type", "USB\n"},
    {"usbc/online", "1\n"},
    {"usbc/voltage_now", "20000000\n"},
    {"usbc/current_max", "3250000\n"},
    {"/firmware/acpi/platform_profile", "low-power\n"},
};

} // namespace

std::vector<BatteryMachine> batteryMachines() {
    std::vector<BatteryMachine> rows;
    BatteryReading expected = reading(onBattery, 60);
    expected.cycles = 212;
    expected.fullCapacity = 40'000 / 11.4;
    expected.designCapacity = 50'000 / 11.4;
    expected.health = 80;
    expected.watts = -12;
    expected.minutesRemaining = 120;
    rows.push_back({"laptop that counts energy", energyLaptop, expected});
    rows.push_back(
        {"driver that signs its power", with(energyLaptop, {{"BAT0/power_now", "-12000000"}}), expected});
    rows.push_back({"a mouse beside it",
                    with(energyLaptop, {{"hidpp_battery_0/type", "Battery"},
                                        {"hidpp_battery_0/scope", "Device"},
                                        {"hidpp_battery_0/status", "Charging"},
                                        {"hidpp_battery_0/capacity", "5"}}),
                    expected});
    rows.push_back({"an empty bay beside it",
                    with(energyLaptop, {{"BAT1/type", "Battery"}, {"BAT1/present", "0"}}), expected});
    expected.watts.reset();
    expected.minutesRemaining.reset();
    rows.push_back({"driver that does not measure power says 0",
                    with(energyLaptop, {{"BAT0/power_now", "0"}}), expected});
    expected.state = pluggedIn;
    expected.watts = 0;
    rows.push_back({"held below full: not charging",
                    with(energyLaptop, {{"BAT0/power_now", "0"}, {"BAT0/status", "Not charging"}}),
                    expected});
    expected.state = onBattery;
    expected.watts = -12;
    expected.minutesRemaining = 120;
    rows.push_back(
        {"unknown status, adapter unplugged", with(energyLaptop, {{"BAT0/status", "Unknown"}}), expected});

    expected = reading(charging, 300 / 4.5);
    expected.condition = BatteryCondition::normal;
    expected.temperature = 31.2;
    expected.fullCapacity = 4500;
    expected.designCapacity = 5000;
    expected.health = 90;
    expected.watts = 12;
    expected.minutesToFull = 80;
    expected.adapterWatts = 65;
    expected.lowPowerMode = true;
    rows.push_back({"laptop that counts charge", chargeLaptop, expected});
    expected.state = onBattery;
    expected.watts = -12;
    expected.minutesToFull.reset();
    expected.minutesRemaining = 3.0 * 7.6 / 12 * 60;
    rows.push_back({"unsigned current while it discharges",
                    with(chargeLaptop, {{"BAT1/status", "Discharging"}}), expected});

    expected = reading(onBattery, 50);
    expected.cycles = 300;
    expected.fullCapacity = 4000;
    expected.designCapacity = 5000;
    expected.health = 80;
    expected.watts = -10;
    expected.minutesRemaining = 120;
    rows.push_back({"two batteries, one resting",
                    {{"BAT0/type", "Battery"},
                     {"BAT0/status", "Unknown"},
                     {"BAT0/cycle_count", "100"},
                     {"BAT0/voltage_min_design", "10000000"},
                     {"BAT0/power_now", "0"},
                     {"BAT0/energy_now", "15000000"},
                     {"BAT0/energy_full", "20000000"},
                     {"BAT0/energy_full_design", "25000000"},
                     {"BAT1/type", "Battery"},
                     {"BAT1/status", "Discharging"},
                     {"BAT1/cycle_count", "300"},
                     {"BAT1/voltage_min_design", "20000000"},
                     {"BAT1/power_now", "10000000"},
                     {"BAT1/energy_now", "5000000"},
                     {"BAT1/energy_full", "20000000"},
                     {"BAT1/energy_full_design", "25000000"}},
                    expected});

    rows.push_back({"only a percentage",
                    {{"b/type", "Battery"}, {"b/status", "Full"}, {"b/capacity", "97"}},
                    reading(charged, 97)});
    expected = reading(pluggedIn, 55);
    expected.condition = BatteryCondition::service;
    rows.push_back({"a machine that publishes nonsense",
                    {{"b/type", "Battery"},
                     {"b/status", "Whatever"},
                     {"b/health", "Dead"},
                     {"b/capacity", "55"},
                     {"b/cycle_count", "0"},
                     {"b/energy_now", "90000000"},
                     {"b/energy_full", "40000000"},
                     {"b/voltage_now", "4294967295"},
                     {"b/power_now", "99999999999999999999"},
                     {"b/temp", "-2731"},
                     {"b/time_to_empty_now", "3932100"}},
                    expected});
    rows.push_back({"a charge a little beyond full is full",
                    {{"b/type", "Battery"},
                     {"b/status", "Full"},
                     {"b/capacity", "100"},
                     {"b/charge_now", "100500"},
                     {"b/charge_full", "100000"}},
                    reading(charged, 100)});

    const BatteryReading none = BatteryReading::missing(absent, BatteryMachine::now);
    const BatteryReading unreadable = BatteryReading::missing(unavailable, BatteryMachine::now);
    rows.push_back({"desktop", {{"AC/type", "Mains"}, {"AC/online", "1"}}, none});
    rows.push_back({"desktop with a mouse and a supply for hard times",
                    {{"mouse/type", "Battery"},
                     {"mouse/scope", "Device"},
                     {"mouse/capacity", "80"},
                     {"ups/type", "UPS"},
                     {"ups/capacity", "100"}},
                    none});
    rows.push_back({"a stray file among the supplies", {{"/class/power_supply/x", ""}}, unreadable});
    rows.push_back({"virtual machine with no such class", {{"/class/thermal/x", ""}}, none});
    rows.push_back({"nothing can be listed", {}, unreadable});
    rows.push_back({"a battery of which nothing can be read", {{"b/type", "Battery"}}, unreadable});
    rows.push_back({"something without even a type", {{"b/capacity", "50"}}, unreadable});
    return rows;
}

void BatteryMachine::write(const TemporaryFolder& sys) const {
    for (const auto& [file, text] : files)
        sys.write(file.starts_with('/') ? file.substr(1) : "class/power_supply/" + file, text);
}

} // namespace varnet
