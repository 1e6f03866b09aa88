#include "VarnetApp/Platform/BatteryPower.h"
#include "tests/VarnetApp/Platform/BatteryMachines.h"

#include <gtest/gtest.h>

#include <optional>

namespace varnet {
namespace {

void expectNear(std::optional<double> found, std::optional<double> expected, const char* field) {
    ASSERT_EQ(found.has_value(), expected.has_value()) << field << " " << found.value_or(-1);
    EXPECT_NEAR(found.value_or(0), expected.value_or(0), 1e-6) << field;
}

TEST(BatteryReader, readsManyMachines) {
    for (const BatteryMachine& machine : batteryMachines()) {
        SCOPED_TRACE(machine.name);
        const TemporaryFolder sys;
        machine.write(sys);
        const auto found = platform::makeBatteryReader(sys.path().string())->read(BatteryMachine::now);
        const BatteryReading& expected = machine.expected;
        EXPECT_EQ(found.date, BatteryMachine::now);
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
}

} // namespace
} // namespace varnet
