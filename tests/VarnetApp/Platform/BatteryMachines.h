#pragma once

#include "VarnetCore/Battery/BatteryReading.h"
#include "tests/fakes/TemporaryFolder.h"

#include <map>
#include <string>
#include <vector>

namespace varnet {

/// What a machine publishes of its power supplies, and what is to be read there.
struct BatteryMachine {
    /// By name below class/power_supply, or from the root where it begins with a stroke.
    using Files = std::map<std::string, std::string>;
    static constexpr Date now{800'000'000};

    /// Lays the files down as a machine would show them.
    void write(const TemporaryFolder& sys) const;

    const char* name;
    Files files;
    BatteryReading expected;
};

/// Laptops of many makes, desktops, machines that talk nonsense, machines that say nothing.
std::vector<BatteryMachine> batteryMachines();

} // namespace varnet
