// Laptops of many makes, desktops, machines that talk nonsense, machines that say nothing.

#include "VarnetApp/Platform/BatteryPower.h"
#include "VarnetCore/Battery/BatteryReading.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <optional>
#include <sstream>
#include <string>

namespace varnet {
namespace {

using enum BatteryAvailability;
using enum BatteryState;

constexpr Date now{800'000'000};

/// Lays files down as a machine would show them.
/// @param text lines of "FOLDER: FILE=CONTENTS, FILE=CONTENTS", below class/power_supply or from the root;
/// later
///     ones replace earlier ones
void lay(const TemporaryFolder& sys, const std::string& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(": ");
        const std::string folder = line.substr(0, colon);
        std::istringstream files(line.substr(colon + 1));
        for (std::string file; std::getline(files, file, ',');) {
            const std::size_t sign = file.find('=');
            sys.write((folder[0] == '/' ? folder.substr(1) : "class/power_supply/" + folder) + '/' +
                          file.substr(1, sign - 1),
                      file.substr(sign + 1) + '\n');
        }
    }
}

const std::string energyLaptop = R"(AC: type=Mains, online=0
BAT0: type=Battery, present=1, status=Discharging, capacity=60, cycle_count=212, power_now=12000000
BAT0: voltage_min_design=11400000, voltage_now=11800000
BAT0: energy_now=24000000, energy_full=40000000, energy_full_design=50000000
)";

const std::string chargeLaptop = R"(ADP1: type=Mains, online=1
BAT1: type=Battery, scope=System, status=Charging, health=Good, temp=312, time_to_full_now=4800
BAT1: voltage_min_design=7600000, voltage_now=8000000, current_now=1500000
BAT1: charge_now=3000000, charge_full=4500000, charge_full_design=5000000
usbc: type=USB, online=1, voltage_now=20000000, current_max=3250000
/firmware/acpi: platform_profile=low-power
)";

const std::string twoBatteries = R"(BAT0: type=Battery, status=Unknown, cycle_count=100, power_now=0
BAT0: voltage_min_design=10000000, energy_now=15000000, energy_full=20000000, energy_full_design=25000000
BAT1: type=Battery, status=Discharging, cycle_count=300, power_now=10000000
BAT1: voltage_min_design=20000000, energy_now=5000000, energy_full=20000000, energy_full_design=25000000
)";

const std::string nonsense = R"(b: type=Battery, status=Whatever, health=Dead, capacity=55, cycle_count=0
b: energy_now=90000000, energy_full=40000000, voltage_now=4294967295, power_now=99999999999999999999
b: temp=-2731, time_to_empty_now=3932100
)";

void expectNear(std::optional<double> found, std::optional<double> expected, const char* field) {
    ASSERT_EQ(found.has_value(), expected.has_value()) << field << " " << found.value_or(-1);
    EXPECT_NEAR(found.value_or(0), expected.value_or(0), 1e-6) << field;
}

void expectReading(const char* machine, const std::string& files, const BatteryReading& expected) {
    SCOPED_TRACE(machine);
    const TemporaryFolder sys;
    lay(sys, files);
    const auto found = platform::makeBatteryReader(sys.path().string())->read(now);
    EXPECT_EQ(found.date, now);
    EXPECT_EQ(rawValue(found.availability), rawValue(expected.availability));
    EXPECT_EQ(rawValue(found.state), rawValue(expected.state));
    EXPECT_EQ(rawValue(found.condition), rawValue(expected.condition));
    EXPECT_EQ(found.cycles, expected.cycles);
    EXPECT_EQ(found.lowPowerMode, expected.lowPowerMode);
    expectNear(found.charge, expected.charge, "charge");
    expectNear(found.health, expected.health, "health");
    expectNear(found.fullCapacity, expected.fullCapacity, "full capacity");
    expectNear(found.designCapacity, expected.designCapacity, "design capacity");
    expectNear(found.watts, expected.watts, "watts");
    expectNear(found.temperature, expected.temperature, "temperature");
    expectNear(found.minutesRemaining, expected.minutesRemaining, "minutes remaining");
    expectNear(found.minutesToFull, expected.minutesToFull, "minutes to full");
    expectNear(found.adapterWatts, expected.adapterWatts, "adapter watts");
}

BatteryReading reading(BatteryState state, std::optional<double> charge) {
    BatteryReading result = BatteryReading::missing(available, now);
    result.state = state;
    result.charge = charge;
    return result;
}

TEST(BatteryReader, readsLaptops) {
    BatteryReading expected = reading(onBattery, 60);
    expected.cycles = 212;
    expected.fullCapacity = 40'000 / 11.4;
    expected.designCapacity = 50'000 / 11.4;
    expected.health = 80;
    expected.watts = -12;
    expected.minutesRemaining = 120;
    expectReading("one that counts energy", energyLaptop, expected);
    expectReading("driver that signs its power", energyLaptop + "BAT0: power_now=-12000000", expected);
    expectReading("a mouse beside it",
                  energyLaptop + "hidpp_battery_0: type=Battery, scope=Device, status=Charging, capacity=5",
                  expected);
    expectReading("an empty bay beside it", energyLaptop + "BAT1: type=Battery, present=0", expected);
    expectReading("unknown status, adapter unplugged", energyLaptop + "BAT0: status=Unknown", expected);
    expected.watts.reset();
    expected.minutesRemaining.reset();
    expectReading("driver that does not measure power says 0", energyLaptop + "BAT0: power_now=0", expected);
    expected.state = pluggedIn;
    expected.watts = 0;
    expectReading("held below full", energyLaptop + "BAT0: power_now=0, status=Not charging", expected);

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
    expectReading("one that counts charge", chargeLaptop, expected);
    expected.state = onBattery;
    expected.watts = -12;
    expected.minutesToFull.reset();
    expected.minutesRemaining = 3.0 * 7.6 / 12 * 60;
    expectReading("unsigned current while it discharges", chargeLaptop + "BAT1: status=Discharging",
                  expected);

    expected = reading(onBattery, 50);
    expected.cycles = 300;
    expected.fullCapacity = 4000;
    expected.designCapacity = 5000;
    expected.health = 80;
    expected.watts = -10;
    expected.minutesRemaining = 120;
    expectReading("two batteries, one resting", twoBatteries, expected);
}

TEST(BatteryReader, readsWhatLittleThereIs) {
    BatteryReading expected = reading(pluggedIn, 55);
    expected.condition = BatteryCondition::service;
    expectReading("a machine that publishes nonsense", nonsense, expected);
    expectReading("only a percentage", "b: type=Battery, status=Full, capacity=97", reading(charged, 97));
    expectReading("a charge a little beyond full is full",
                  "b: type=Battery, status=Full, capacity=100, charge_now=100500, charge_full=100000",
                  reading(charged, 100));

    const BatteryReading none = BatteryReading::missing(absent, now);
    expectReading("desktop", "AC: type=Mains, online=1", none);
    expectReading("desktop with a mouse and a supply for hard times",
                  "mouse: type=Battery, scope=Device, capacity=80\nups: type=UPS, capacity=100", none);
    expectReading("virtual machine with no such class", "/class/thermal: x=", none);
    const BatteryReading unreadable = BatteryReading::missing(unavailable, now);
    expectReading("a stray file among the supplies", "/class/power_supply: x=", unreadable);
    expectReading("nothing can be listed", "", unreadable);
    expectReading("a battery of which nothing can be read", "b: type=Battery", unreadable);
    expectReading("something without even a type", "b: capacity=50", unreadable);
}

} // namespace
} // namespace varnet
