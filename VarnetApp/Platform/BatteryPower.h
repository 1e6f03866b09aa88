#pragma once

#include "VarnetCore/Battery/BatteryReader.h"

#include <memory>
#include <string>

namespace varnet::platform {

/// The battery of this machine.
/// @param sensorRoot folder to read in place of /sys; empty: the running kernel's
std::unique_ptr<BatteryReader> makeBatteryReader(const std::string& sensorRoot = {});

} // namespace varnet::platform
